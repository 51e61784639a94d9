#pragma once

#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

#include <memory>
#include <string>

/// @file
/// What every widget has: a rectangle, click tracking for each mouse button, and a font.
///
/// Widgets are immediate: the game polls each of them once per logic step and draws it once per frame, in the
/// order it likes. By themselves they know nothing of each other: a click reaches every widget under the
/// pointer, and only the keyboard belongs to one list or text entry at a time. A KXUIPanel polls and draws
/// many by one call, gives the mouse to the one on top and takes the keyboard from one to the next. With
/// several windows each widget is told its own, by setWindowID(). Everything needs the thread that owns the
/// OpenGL context. Texts and paths that are given to a widget are copied.

class KXFont;
class KXUILayout;
class KXUIPanel;
class _KXCaption;
class _KXFocus;

/// A widget in words, for those who have it read aloud, and for tests.
struct KXUIDescription {
    std::string role;  ///< What it is: "button", "check box"; empty for what only decorates.
    std::string name;  ///< What it is called: its caption, else the label that names it, else its tooltip.
    std::string value; ///< What it holds: its text, its number, the row that is chosen.
    std::string state; ///< What else is to be said, with commas between: "disabled", "checked", "focused".
};

/// A key that is meant for a widget.
struct KXUIKey {
    int key;      ///< Its number, see KXKeyNumber.
    int isRepeat; ///< Non-zero where it is held and repeats.
    int shift;    ///< Non-zero while either Shift is held.
    int control;  ///< Non-zero while either Control is held.
    int alt;      ///< Non-zero while either Alt is held.
    int command;  ///< Non-zero while either Command key is held.
};

/// What the mouse did with a widget.
struct KXUIMouse {
    KXInputEventType type; ///< #KXInputEventMouseDown, Up, Moved or Wheel.
    int button;            ///< Which went down or up, a KXMouseButton: the left one with Control, too.
    KXPoint point;         ///< Where the pointer was then, in the units of the widget's rectangle.
    KXPoint motion;        ///< How far it moved, or the notches that the wheel was turned.
    int shift;             ///< Non-zero while either Shift is held.
    int control;           ///< Non-zero while either Control is held.
    int alt;               ///< Non-zero while either Alt is held.
    int command;           ///< Non-zero while either Command key is held.
};

/// The base of all widgets.
class KX_API _KXUIWidget {
public:
    static const int KXUIWidgetStateNormal = 0;    ///< The pointer is elsewhere.
    static const int KXUIWidgetStateHover = 1;     ///< The pointer is over the widget.
    static const int KXUIWidgetStateDepressed = 2; ///< A press that began over the widget is held over it.
    /// Pixels between the edge of any widget and its text, (3, 3). May be changed, best before widgets are
    /// made: texts follow at once, sizes that were fitted to them do not.
    static KXSize KXUIWidgetInnerPadding;

    /// An empty rectangle at (0, 0), with the user-interface font if one is set.
    _KXUIWidget();
    /// The font stays: it belongs to the font cache.
    virtual ~_KXUIWidget();
    _KXUIWidget(const _KXUIWidget&) = delete;
    _KXUIWidget& operator=(const _KXUIWidget&) = delete;

    /// Moves the top-left corner to @a origin, pixels.
    virtual void setOrigin(KXPoint origin);
    /// Sets the extent in pixels.
    virtual void setSize(KXSize size);
    /// setOrigin(), then setSize().
    virtual void setRect(KXPoint origin, KXSize size);
    /// The rectangle in pixels.
    KXRect rect() const;

    /// -1 while the pointer is over the widget, else 0, as for one that is disabled or hidden. The left and
    /// top edges do not belong to it, the right and bottom ones do.
    virtual int mouseOver();
    /// Non-zero while a press of @a button that began over the widget is held, as of the last clicked(@a
    /// button), a KXMouseButton.
    virtual int mouseDownInside(int button);
    /// -1 once for each click of @a button, else 0. Call it once per logic step.
    ///
    /// A click is a press over the widget and its release, if the pointer was over the widget in the last
    /// call before the release; where it is at the release does not matter. A press begins in the first call
    /// that sees the button down. Buttons from #KXMouseBack on are never
    /// clicked.
    virtual int clicked(int button);
    /// Lets the next clicked(@a button) report a click.
    virtual void click(int button);
    /// Draws the widget into the current target. The base draws nothing.
    virtual void draw();

    /// Gives the widget a font of its own from the font cache. @param path the font file.
    /// @param mode how its glyphs are drawn.
    /// @return -1 if there is a font now, 0 with none left: when memory is exhausted or the library is not
    /// started. A file that cannot be opened, or null, gives -1 and a font that measures 0 and prints
    /// nothing; "Unable to set font face size" is in KXError() when it is first asked for.
    virtual int setFont(const char* path, KXAliasMode mode);
    /// Changes the size of the widget's own font in points, and so of every widget that shares it. A size
    /// that the font refuses changes nothing.
    /// @return -1 with a font of its own; 0 without a font, and for the user-interface font with
    /// "Widget(%p) is using the global UI font. Its size is not changeable." in KXError().
    virtual int setFontSize(int size);

    /// Says which window the widget is in: what the user does in others is then nothing to it, neither a
    /// click nor the wheel nor a key. 0, as at the start, is all windows, as is right for a game with one.
    /// What a widget is made of follows: the buttons of a dialog, the entries of a menu, the parts of a file
    /// browser. @param id KXWindow::id().
    virtual void setWindowID(unsigned id);
    /// The window of setWindowID().
    unsigned windowID() const;

    /// With 0 the user works the widget no more, until a call with another number: it is drawn dimmed, is
    /// never clicked, not by click() either, and lets go of the keyboard. Polling and drawing it go on.
    void setEnabled(int enabled);
    /// -1 if the user can work it, as at the start, else 0.
    int isEnabled() const;
    /// With 0 the widget is hidden, until a call with another number: it draws nothing and is as disabled.
    void setVisible(int visible);
    /// -1 if it is drawn, as at the start, else 0.
    int isVisible() const;

    /// Gives the widget a text that KXUIDrawTooltip() shows when the pointer rests on it, also while it is
    /// disabled. @param text copied; no format, with colour spans; null or an empty one for none.
    void setTooltip(const char* text);
    /// The text of setTooltip(), null for none.
    const char* tooltip() const;

    /// -1 if the user acted on the widget in the last KXUIPanel::poll(): clicked it, or changed what it
    /// holds.
    int activated() const;
    /// The widget in words.
    virtual KXUIDescription description() const;

    // What a panel asks of a widget, to be overridden by widgets that a game makes itself.

    /// Polls the widget, once per logic step. The base asks clicked(KXMouseLeft). @return -1 if the user
    /// acted.
    virtual int pollInPanel();
    /// Whether the keyboard stops at it; the base says -1.
    virtual int takesKeyboard() const;
    /// A key went down or repeats while the widget has the keyboard. The base clicks it at Return, the key
    /// pad's Enter and Space. @return -1 if it was for the widget, else 0.
    virtual int handleKey(const KXUIKey& key);
    /// The mouse did something while this lies on top of all else under the pointer; the base does nothing.
    /// It is told everything in the order in which it came, before pollInPanel(), also what lies within one
    /// step. Where a button went down over it the widget is told what comes until that button is up again,
    /// wherever the pointer is; one that is disabled meanwhile is not, so ask KXMouseHeld(), too.
    virtual void handleMouse(const KXUIMouse& mouse);
    /// Where the ring is drawn while it has the keyboard: its rectangle.
    virtual KXRect focusRect() const;
    /// Whether a point belongs to it: one in its rectangle, without the left and top edges.
    virtual int containsPoint(KXPoint point) const;
    /// Whether turning the wheel over it does something; the base says 0, and the wheel scrolls what it is
    /// in.
    virtual int takesWheel() const;
    /// -1 while something of it is open above all other widgets, such as the list of a drop-down: the mouse
    /// is its alone, wherever it is.
    virtual int hasPopup() const;
    /// Draws that, after all other widgets were drawn.
    virtual void drawPopup();
    /// The theme has changed: fits the size to the text anew, if that is what it was.
    virtual void refit();
    /// The part of it that has the keyboard, for widgets of the library; null if the panel shall provide one.
    virtual _KXFocus* keyboardPart();

    // Used by the library itself.
    KX_INTERNAL KXSize _naturalSize() const;
    KX_INTERNAL unsigned _sizeChangeCount() const;
    KX_INTERNAL void _place(KXRect rect);
    KX_INTERNAL bool _isUnderPointer();
    KX_INTERNAL bool _isInRect() const;
    KX_INTERNAL bool _takesInput() const;
    KX_INTERNAL void _letGo(int button);
    KX_INTERNAL _KXCaption* _tooltipCaption() const;
    KX_INTERNAL void _setMnemonic(int key);
    KX_INTERNAL int _mnemonicIn(const char* text) const;
    KX_INTERNAL void _noteAskedSize(KXSize size);
    KX_INTERNAL void _setActivated(int activated);
    KX_INTERNAL KXUIPanel* _panel() const;
    KX_INTERNAL void _setPanel(KXUIPanel* panel);
    KX_INTERNAL KXUIDescription _described(const char* role, const char* caption) const;
    KX_INTERNAL _KXUIWidget* _pair() const;
    KX_INTERNAL void _pairWith(_KXUIWidget* other);
    KX_INTERNAL KXSize _idealSizeForText(const char* text) const;
    KX_INTERNAL KXFont* _fontInUse() const;
    KX_INTERNAL int _isDepressed() const;
    KX_INTERNAL bool _mouseIsElsewhere() const;
    KX_INTERNAL bool _keyboardIsElsewhere() const;

private:
    friend class KXUILayout;
    struct ButtonRecord {
        int32_t pressedInside;
        int32_t held;
        int32_t state;
        int32_t pendingClick;
    };
    KX_INTERNAL ButtonRecord* _record(int button);

    KXRect _rect;
    KXSize _natural; // that it was given last, but not by a layout
    KXSize _asked;   // of a widget that fits its text: with -1 for what it fits
    unsigned _sizeChanges;
    bool _isBeingPlaced;
    unsigned _windowID;
    int32_t _isDisabled, _isHidden, _wasActivated, _mnemonic;
    ButtonRecord _buttons[7];
    std::unique_ptr<_KXCaption> _tooltip;
    _KXUIWidget* _pairedWith; // a label and the widget that it names
    KXUILayout* _layout;      // that it is in
    KXUIPanel* _inPanel;

protected:
    // For the widgets of the library.
    std::string _fontPath;      ///< The path that setFont() was given; empty before.
    KXAliasMode _fontAliasMode; ///< The mode that setFont() was given.
    int _fontSize;              ///< The size, in points, that setFont() fetches a font at.

private:
    KXFont* _font;
    unsigned _fontGeneration;
};

/// Shows the tooltip of the widget under the pointer, if it has one and the pointer has rested for half a
/// second (#KXUITooltipTheme::delay) by the time of logic steps: near the pointer, inside the window or what
/// else is drawn into. A press of anything and a pointer that moves on hide it. To be called at the end of
/// each frame, for each window with its own as the target, since it is drawn over everything.
///
/// The widget under the pointer is the one that was drawn last; a part of a widget, such as a dialog's
/// button, is one by itself. Its font is the widget's. Drawing a tooltip for the first time asks for memory,
/// as KXTextLayout::draw() does.
KX_API void KXUIDrawTooltip();
