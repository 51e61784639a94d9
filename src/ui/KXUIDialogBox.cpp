#include <Kobaltrix/KXUIDialogBox.h>

#include "core/ground/Truncate.h"
#include "ui/Caption.h"
#include "ui/Look.h"
#include "ui/Theme.h"
#include "ui/WidgetDrawing.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXUIButton.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

KXUIDialogBox::KXUIDialogBox()
    : _messageWidth(0), _messageAlign(KXTextAlignStart), _buttonIndexClicked(-1), _keyButton(0), _clicks(0),
      _padding(2), _backgroundColor{1, 1, 1, 1}, _textColor{0, 0, 0, 1}, _borderColor{0, 0, 0, 1} {}

KXUIDialogBox::~KXUIDialogBox() = default;

int KXUIDialogBox::setFont(const char* path, KXAliasMode mode) {
    const int result = _KXUIWidget::setFont(path, mode);
    if (result)
        resize();
    return result;
}

int KXUIDialogBox::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size);
    if (const KXFont* font = _fontInUse()) {
        for (const auto& button : _buttons)
            button->setFontSize(font->getSize());
        resize();
    }
    return result;
}

void KXUIDialogBox::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    for (const auto& button : _buttons)
        button->setWindowID(id);
}

void KXUIDialogBox::setMessage(const char* text) {
    constexpr std::size_t longest = 512;
    if (!text)
        text = "";
    auto other = std::make_unique<_KXCaption>(
        _KXCaptionsAreLaidOut() ? std::string(text) : std::string(_KXFirstBytes(text, longest)));
    _KXChangeCaption(_message, std::move(other), [this] { resize(); });
}

void KXUIDialogBox::setMessageWidth(float width) {
    _messageWidth = width;
    resize();
}

void KXUIDialogBox::setMessageAlign(KXTextAlign align) { _messageAlign = align; }

void KXUIDialogBox::setOrigin(KXPoint origin) {
    _KXUIWidget::setOrigin(origin);
    if (_KXCaptionsAreLaidOut())
        _placeButtonsInside();
}

void KXUIDialogBox::setSize(KXSize size) {
    _KXUIWidget::setSize(size);
    if (_KXCaptionsAreLaidOut())
        _placeButtonsInside();
}

void KXUIDialogBox::addButton(const char* text) {
    const KXFont* const font = _fontInUse();
    if (!font)
        return;
    auto button = std::make_unique<KXUIButton>();
    if (!_fontPath.empty()) { // a box with the user-interface font never was given a path
        button->setFont(_fontPath.c_str(), _fontAliasMode);
        button->setFontSize(font->getSize());
    }
    button->setText(text ? text : "");
    button->setWindowID(windowID());
    _buttons.push_back(std::move(button));
    try {
        resize();
    } catch (const std::bad_alloc&) {
        _buttons.pop_back();
        throw;
    }
}

void KXUIDialogBox::setPadding(int padding) {
    _padding = padding;
    resize();
}

void KXUIDialogBox::setBackgroundColor(float r, float g, float b, float a) {
    _backgroundColor = {r, g, b, a};
}
void KXUIDialogBox::setTextColor(float r, float g, float b, float a) { _textColor = {r, g, b, a}; }
void KXUIDialogBox::setBorderColor(float r, float g, float b, float a) { _borderColor = {r, g, b, a}; }

static void colorAll(const std::vector<std::unique_ptr<KXUIButton>>& buttons,
                     void (KXUIButton::*setColor)(KXColor), KXColor color) {
    for (const auto& button : buttons)
        (button.get()->*setColor)(color);
}

void KXUIDialogBox::setButtonNormalBackgroundColor(float r, float g, float b, float a) {
    colorAll(_buttons, &KXUIButton::setNormalBackgroundColor, {r, g, b, a});
}
void KXUIDialogBox::setButtonDepressedBackgroundColor(float r, float g, float b, float a) {
    colorAll(_buttons, &KXUIButton::setDepressedBackgroundColor, {r, g, b, a});
}
void KXUIDialogBox::setButtonBorderColor(float r, float g, float b, float a) {
    colorAll(_buttons, &KXUIButton::setBorderColor, {r, g, b, a});
}
void KXUIDialogBox::setButtonTextColor(float r, float g, float b, float a) {
    colorAll(_buttons, &KXUIButton::setTextColor, {r, g, b, a});
}

int KXUIDialogBox::buttonIndexClicked() { return _buttonIndexClicked; }

KXUIButton* KXUIDialogBox::button(int index) {
    return index >= 0 && index < std::ssize(_buttons) ? _buttons[static_cast<std::size_t>(index)].get()
                                                      : nullptr;
}

void KXUIDialogBox::poll() {
    if (!_takesInput()) {
        for (const auto& button : _buttons)
            button->_letGo(KXMouseLeft);
        return;
    }
    for (std::size_t i = 0; i < _buttons.size(); ++i)
        if (_buttons[i]->clicked(KXMouseLeft)) {
            _buttonIndexClicked = static_cast<int32_t>(i);
            ++_clicks;
        }
}

int KXUIDialogBox::pollInPanel() {
    const unsigned before = _clicks;
    poll();
    return _clicks != before ? -1 : 0;
}

int KXUIDialogBox::handleKey(const KXUIKey& key) {
    const int last = static_cast<int>(_buttons.size()) - 1;
    if ((key.key != KXKeyLeft && key.key != KXKeyRight) || last < 0) {
        KXUIButton* const present = button(_keyButton);
        return present ? present->handleKey(key) : 0;
    }
    _keyButton = std::clamp(_keyButton + (key.key == KXKeyLeft ? -1 : 1), 0, last);
    return -1;
}

KXRect KXUIDialogBox::focusRect() const {
    return _keyButton < std::ssize(_buttons) ? _buttons[static_cast<std::size_t>(_keyButton)]->rect()
                                             : rect();
}

KXUIDescription KXUIDialogBox::description() const {
    KXUIDescription said = _described("dialog", _message ? _message->text() : nullptr);
    if (_keyButton < std::ssize(_buttons))
        said.value = _buttons[static_cast<std::size_t>(_keyButton)]->description().name;
    return said;
}

void KXUIDialogBox::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const KXRect box = rect();
    const KXUIColors own = {_borderColor,     _backgroundColor, _backgroundColor,
                            _backgroundColor, _borderColor,     _textColor};
    _KXDrawPart(KXUIPartPanel, box, KXUIPartNormal, own);
    const float padding = static_cast<float>(_padding);
    if (_message)
        _message->drawLines(_fontInUse(), {box.origin.x + padding, box.origin.y + padding},
                            box.size.width - 2 * padding, _KXPartText(KXUIPartPanel, KXUIPartNormal, own),
                            _messageAlign);
    for (const auto& button : _buttons)
        button->draw();
}

void KXUIDialogBox::resize() {
    const KXFont* const font = _fontInUse();
    if (!font)
        return;
    if (_KXCaptionsAreLaidOut())
        return _layOut(*font);
    const KXSize text = font->stringBounds(_message ? _message->text() : "");
    const double padding = _padding;
    int rowWidth = 0, rowHeight = 0;
    for (const auto& button : _buttons) {
        const KXSize size = button->rect().size;
        rowWidth = _KXTruncate(size.width + padding + rowWidth);
        rowHeight =
            _KXTruncate(std::max(static_cast<double>(rowHeight), static_cast<double>(size.height)) + padding);
    }
    const double width = std::max(_KXTruncate(text.width), rowWidth) + 2 * padding;
    const double height = static_cast<double>(rowHeight) + _KXTruncate(text.height) + 2 * padding;
    setSize({static_cast<float>(width), static_cast<float>(height)});
    _placeButtons();
}

// What the buttons take up beside each other.
KXSize KXUIDialogBox::_rowSize() const {
    KXSize row = KXZeroSize;
    for (const auto& button : _buttons) {
        const KXSize size = button->rect().size;
        row.width += size.width + (row.width > 0 ? static_cast<float>(_padding) : 0);
        row.height = std::max(row.height, size.height);
    }
    return row;
}

// The message, and below it the row of buttons, which may make the lines of the message longer.
void KXUIDialogBox::_layOut(const KXFont& font) {
    const float padding = static_cast<float>(_padding);
    const KXSize row = _rowSize();
    const float width = _messageWidth > 0 ? std::max(std::ceil(_messageWidth), row.width) : 0;
    const KXSize text = _message ? _message->sizeOfLines(font, width) : KXZeroSize;
    const float gap = text.height > 0 && row.height > 0 ? padding : 0;
    setSize({std::max(text.width, row.width) + 2 * padding, text.height + gap + row.height + 2 * padding});
}

void KXUIDialogBox::_placeButtonsInside() {
    const auto [origin, size] = rect();
    const float padding = static_cast<float>(_padding), bottom = origin.y + size.height - padding;
    float x = origin.x + size.width - padding - _rowSize().width;
    for (const auto& button : _buttons) {
        const KXSize each = button->rect().size;
        button->setOrigin({x, bottom - each.height});
        x += each.width + padding;
    }
}

void KXUIDialogBox::_placeButtons() {
    const auto [origin, size] = rect();
    const float padding = static_cast<float>(_padding);
    float right = origin.x + size.width;
    for (const auto& button : _buttons) {
        button->setOrigin({static_cast<float>(_KXTruncate(right)) - size.width - padding,
                           (origin.y + size.height) - size.height - padding});
        right = origin.x; // only the first is measured from the right edge
    }
}
