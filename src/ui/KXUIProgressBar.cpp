#include <Kobaltrix/KXUIProgressBar.h>

#include "core/ground/LogicClock.h"
#include "core/ground/Truncate.h"
#include "core/ground/UIColors.h"
#include "ui/Caption.h"
#include "ui/Look.h"
#include "ui/WidgetDrawing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

KXUIProgressBar::KXUIProgressBar()
    : _progress(0), _progressAtStart(0), _start(_KXLogicCurrentTime), _secondsShown(-1), _showsTimeLeft(0),
      _backgroundColor(_KXUIBackroundColor), _doneColor(_KXUISelectionColor), _borderColor(_KXUIBorderColor),
      _textColor(_KXUITextColor) {}

KXUIProgressBar::~KXUIProgressBar() = default;

void KXUIProgressBar::setProgress(float progress) {
    progress = progress > 0 ? std::min(progress, 1.0f) : 0;
    if (progress < _progress || (_progress == 0 && progress == 0)) {
        _start = _KXLogicCurrentTime;
        _progressAtStart = progress;
    }
    _progress = progress;
}

float KXUIProgressBar::progress() const { return _progress; }

float KXUIProgressBar::secondsLeft() const {
    if (_progress >= 1)
        return 0;
    const float done = _progress - _progressAtStart;
    const float seconds = static_cast<float>(_KXLogicCurrentTime - _start) / 1000;
    return done > 0 && seconds > 0 ? seconds / done * (1 - _progress) : -1;
}

void KXUIProgressBar::setText(const char* text) {
    _text = text ? text : "";
    _caption.reset();
}

void KXUIProgressBar::setShowsTimeLeft(int shows) {
    _showsTimeLeft = shows ? -1 : 0;
    _caption.reset();
}

void KXUIProgressBar::setBackgroundColor(KXColor color) { _backgroundColor = color; }
void KXUIProgressBar::setDoneColor(KXColor color) { _doneColor = color; }
void KXUIProgressBar::setBorderColor(KXColor color) { _borderColor = color; }
void KXUIProgressBar::setTextColor(KXColor color) { _textColor = color; }

// Anew only where text or second are others.
void KXUIProgressBar::_writeCaption() {
    constexpr float longest = 359999; // 99 hours, and what is left of the last one
    const float left = _showsTimeLeft ? secondsLeft() : -1;
    const int seconds = left < 0 ? -1 : _KXTruncate(std::ceil(std::min(left, longest)));
    if (_caption && seconds == _secondsShown)
        return;
    char time[32] = "";
    if (seconds >= 3600)
        std::snprintf(time, sizeof time, "%d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
    else if (seconds >= 0)
        std::snprintf(time, sizeof time, "%d:%02d", seconds / 60, seconds % 60);
    _caption = std::make_unique<_KXCaption>(_text + (_text.empty() || !*time ? "" : " ") + time);
    _secondsShown = seconds;
}

int KXUIProgressBar::takesKeyboard() const { return 0; }

KXUIDescription KXUIProgressBar::description() const {
    KXUIDescription said = _described("progress bar", nullptr);
    said.value = std::to_string(_KXTruncate(_progress * 100)) + "%";
    return said;
}

void KXUIProgressBar::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    _writeCaption();
    const KXRect bar = rect();
    const KXUIColors own = {_borderColor, _backgroundColor, _backgroundColor,
                            _doneColor,   _borderColor,     _textColor};
    _KXDrawPart(KXUIPartTrack, bar, KXUIPartNormal, own);
    const float done = std::min(std::round(bar.size.width * _progress), bar.size.width - 1);
    if (done > 1)
        _KXDrawPart(KXUIPartSelection,
                    {{bar.origin.x + 1, bar.origin.y + 1}, {done - 1, bar.size.height - 2}}, KXUIPartNormal,
                    own);
    _caption->drawLineLaidOut(_fontInUse(), bar, KXUIWidgetInnerPadding.width,
                              _KXPartText(KXUIPartTrack, KXUIPartNormal, own), KXTextAlignCentre);
}
