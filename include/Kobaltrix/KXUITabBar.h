#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// The titles of pages, of which one is shown.

/// Titles in a row, one of which is chosen. The game shows the page of that one.
///
/// @code
/// KXUITabBar pages;
/// for (const char* title : {"Map", "Sprites", "Sounds"})
///     pages.add(title);
/// pages.setRect({0, 0}, {320, -1}); // as high as a line
/// pages.poll();                     // in a logic step
/// show(pages.selectedIndex());      // in a frame
/// @endcode
///
/// A press chooses a title. While the bar has the keyboard, Left, Right, Home and End do. Titles that do not
/// fit are scrolled by arrows at both ends and by the wheel; one that is chosen comes into view. If they can
/// be closed (setClosable()), a click on a title's mark, the middle button on the title and Delete ask the
/// game to do so. If they can be moved (setReorderable()), they are dragged, and Control (Command on macOS)
/// and Left or Right move the chosen one.
///
/// Titles are numbered from 0; a number that is none changes nothing. As long as there are titles one is
/// chosen. Ten thousand of them cost a frame no more than those in view.
class KX_API KXUITabBar : public _KXUIWidget {
public:
    /// Without titles.
    KXUITabBar();
    ~KXUITabBar() override;

    /// Appends a title; the first one is chosen. @return its number; -1 for a null @a title.
    int add(const char* title);
    /// Puts a title before number @a index, or behind the last one for count(). @return its number; -1 for
    /// another number or a null @a title.
    int insert(int index, const char* title);
    /// Removes a title. Where it was chosen the next one is then, or the last. @return -1 on success, 0 if
    /// there is no such title.
    int remove(int index);
    /// Removes all of them.
    void clear();
    /// Number of titles.
    int count() const;
    /// Gives a page another title. @return -1 on success, 0 if there is none or @a title is null.
    int setTitle(int index, const char* title);
    /// A title, null if there is no such. It belongs to the bar and is valid until it changes.
    const char* title(int index) const;

    /// Chooses a title and brings it into view. @return -1 on success, 0 if there is no such title.
    int setSelectedIndex(int index);
    /// The chosen one, -1 without titles.
    int selectedIndex() const;

    /// With a non-zero @a closable each title has a mark that asks for it to be closed.
    void setClosable(int closable);
    /// The title that the user asked to close in the last poll(), -1 for none. It stays until the game calls
    /// remove().
    int closedIndex() const;
    /// With a non-zero @a reorderable the user may put titles in another order.
    void setReorderable(int reorderable);
    /// Where the title was that the user moved in the last poll(), -1 for none. What belongs to it is to be
    /// taken out there and put in at movedTo().
    int movedFrom() const;
    /// Where it is now, -1 for none.
    int movedTo() const;

    /// Gives it the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while it has the keyboard, else 0.
    int hasFocus() const;

    /// Follows mouse and keyboard. Call it once per logic step. @return -1 when the user chose, closed or
    /// moved a title in this call, else 0.
    int poll();
    /// Sets the extent in pixels. A width of -1 becomes that of all titles, a height of -1 that of a line.
    void setSize(KXSize size) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws the titles.
    void draw() override;

    int takesWheel() const override;              ///< -1: it scrolls the titles.
    int pollInPanel() override;                   ///< poll().
    KXUIDescription description() const override; ///< With the chosen title as its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
