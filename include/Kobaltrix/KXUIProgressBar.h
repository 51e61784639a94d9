#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// How far something has come.

class _KXCaption;

/// A bar that fills from left to right, with a text in its middle if it is given one.
///
/// @code
/// bar.setShowsTimeLeft(-1);
/// bar.setProgress(done / whole); // whenever more is done
/// bar.draw();
/// @endcode
class KX_API KXUIProgressBar : public _KXUIWidget {
public:
    /// An empty bar, in the colours of KXSetUIColor(): background, border, selection for what is done, texts.
    KXUIProgressBar();
    ~KXUIProgressBar() override;

    /// Sets how much is done. @param progress from 0 to 1; others count as the end that is nearer, what is
    /// no number as 0. Less than before begins the time anew.
    void setProgress(float progress);
    /// How much is done, 0 to 1.
    float progress() const;
    /// Seconds that the rest will take at the pace so far, by the logic loop's time; 0 when all is done, and
    /// -1 while there is no pace yet.
    float secondsLeft() const;

    /// Sets the text in the middle. @param text copied, laid out and no format, with colour spans; null for
    /// none.
    void setText(const char* text);
    /// Shows the time left as minutes and seconds, behind the text if there is one; 0 as at the start does
    /// not.
    void setShowsTimeLeft(int shows);

    void setBackgroundColor(KXColor color); ///< Of what is to be done.
    void setDoneColor(KXColor color);       ///< Of what is done.
    void setBorderColor(KXColor color);     ///< Around the bar.
    void setTextColor(KXColor color);       ///< Of text and time.

    /// Draws the bar. Throws std::bad_alloc as KXTextLayout::draw() does; a bar that shows the time asks for
    /// memory in each second of it.
    void draw() override;
    int takesKeyboard() const override;           ///< 0.
    KXUIDescription description() const override; ///< Its value is in percent.

private:
    KX_INTERNAL void _writeCaption();

    std::string _text;
    std::unique_ptr<_KXCaption> _caption; // text and time as they are shown; null where that has changed
    float _progress, _progressAtStart;
    uint32_t _start;   // of the logic loop's time
    int _secondsShown; // -1 for none
    int32_t _showsTimeLeft;
    KXColor _backgroundColor, _doneColor, _borderColor, _textColor;
};
