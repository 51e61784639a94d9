#pragma once

#include <Kobaltrix/KXUITabBar.h>

#include "ui/Caption.h"
#include "ui/Control.h"

#include <vector>

struct KXUITabBar::State : _KXControl {
    explicit State(KXUITabBar& of) : _KXControl(of), bar(of) { leavesReturn = true; }

    struct Tab {
        _KXCaption title;
        float width; ///< That its title needs, less than 0 while it is not measured.
    };
    KXUITabBar& bar;
    std::vector<Tab> tabs;
    std::vector<float> edges; ///< Where each begins, and where the last ends; empty while not measured.
    unsigned fontRevision = 0;
    int chosen = -1;
    bool isClosable = false, isReorderable = false;
    float scrolled = 0;         ///< Pixels of the titles that lie left of the view.
    bool revealsChosen = false; ///< When the layout is next looked at: the bar may have no size yet.

    int closed = -1, movedFrom = -1, movedTo = -1; ///< As the last poll told,
    int closedNow = -1, fromNow = -1, toNow = -1;  ///< and what none has told of yet.

    enum class Press { Nothing, Title, Dragged, Mark, Arrow };
    Press press = Press::Nothing;
    int pressedTab = -1;
    float pressX = 0;
    int arrow = 0; ///< The one that is held: -1 for the left, 1 for the right, else 0.
    _KXHeldButton repeats;

    /// Where the titles are seen, between the arrows where there are some.
    struct View {
        float left, right, all;
        bool scrolls;
        float width() const { return right - left; }
    };
    void tabsChanged();
    void measure();
    View view();
    float arrowWidth() const;
    KXRect tabRect(const View& view, int index) const;
    KXRect markRect(const View& view, int index) const;
    KXRect arrowRect(bool left) const;
    int tabUnder(const View& view) const;
    int dropIndex(const View& view) const;
    bool isOverMark(const View& view, int index) const;
    void choose(int index);
    void close(int index);
    void move(int from, int to);
    void drawTab(const View& view, int index);

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void pressed(const _KXModifiers&) override;
    void dragged() override;
    void released() override;
    void wheelTurned(float notches) override;
    void stepHeard() override;
    void leftOut() override { press = Press::Nothing; }
};
