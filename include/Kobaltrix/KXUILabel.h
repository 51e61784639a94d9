#pragma once

#include <Kobaltrix/KXTextLayout.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// Texts beside widgets.

class _KXCaption;

/// A text in a box, laid out by a KXTextLayout whatever the theme says, that may name another widget.
///
/// @code
/// KXUILabel label;
/// label.setText("Name");
/// label.setOrigin({20, 90});
/// label.setWidget(&entry); // a click on the label puts the cursor into the entry
/// @endcode
///
/// It is as large as its text until setSize() says otherwise, and follows its text. Draw it with draw(), and
/// poll it with clicked(KXMouseLeft) if it names a widget. A font's rendering offset does not count.
class KX_API KXUILabel : public _KXUIWidget {
public:
    /// A label without text, in the colour of KXSetUIColor() for texts.
    KXUILabel();
    ~KXUILabel() override;

    /// Sets the text. @param text copied; UTF-8, no format, with colour spans unless the options say
    /// otherwise; null is an empty one.
    void setText(const char* text);
    /// The text as it was set.
    const char* text() const;
    /// How the text is laid out: alignment, most lines, direction, outline, shadow and more. The width and
    /// the height are the label's, so those in @a options do not count. Without a width of its own the label
    /// wraps nothing.
    void setOptions(const KXTextOptions& options);
    /// The colour outside of colour spans.
    void setTextColor(KXColor color);

    /// Sets the extent in pixels. A width or height of -1, as at the start, is fitted to the text, now and
    /// whenever text, options or font change: a width alone gives a label that is as high as its lines. A
    /// height of its own is for #KXTextOptions::verticalAlign and cuts nothing.
    void setSize(KXSize size) override;
    /// Like _KXUIWidget::setFont(), and fits the size.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), and fits the size also where that gives 0.
    int setFontSize(int size) override;

    /// Names a widget: a click on the label gives it the keyboard if it takes keys, as an entry does, and
    /// clicks any other with the left button. @param widget not owned, and forgotten when it ends; null for
    /// none. A widget has one label, the last that was given it.
    void setWidget(_KXUIWidget* widget);
    /// The widget that it names; null for none.
    _KXUIWidget* widget() const;

    /// Like _KXUIWidget::clicked(); a click of the left button is handed on to the widget that it names.
    int clicked(int button) override;
    /// Draws the text. Throws std::bad_alloc as KXTextLayout::draw() does.
    void draw() override;
    int takesKeyboard() const override; ///< 0.
    void refit() override;
    KXUIDescription description() const override;

    // Used by the library itself.
    KX_INTERNAL KXSize _sizeAt(float width);

private:
    KX_INTERNAL const KXTextLayout* _laidOut(KXSize size);
    KX_INTERNAL void _fit();

    std::unique_ptr<_KXCaption> _text;
    KXTextOptions _options;
    KXColor _textColor;
    KXSize _wanted;
};
