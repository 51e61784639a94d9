#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// A tree of texts, whose nodes open and close.

class KXTexture;

/// A list of the nodes of a tree. Below a node that is open stand those that it holds, further to the right.
///
/// @code
/// KXUITreeList tree;
/// const int village = tree.add(0, "Village"); // at the top
/// tree.add(village, "Bakery");
/// tree.setOpen(village, -1);
/// if (tree.poll() && tree.activatedNode()) // in a logic step
///     edit(tree.activatedNode());
/// @endcode
///
/// It is worked as a #KXUIListBox is, several rows that are selected included. A press on the mark before a
/// node opens or closes it; so do Right and Left, which otherwise go to the first node that it holds and to
/// the one that holds it.
///
/// Nodes have numbers from 1 on, which stay theirs until they are removed and are never given again; 0 is the
/// top, which holds the outermost ones. Another number is no node: it changes nothing and gives the neutral
/// result. Nodes may be added, moved and removed at any time. What a closed node holds is not selected. A
/// hundred thousand nodes cost a frame no more than those in view; the first look after nodes have come,
/// gone, opened or closed walks through those that are shown.
///
/// Texts are laid out, with colour spans, and end with an ellipsis where they do not fit.
class KX_API KXUITreeList : public _KXUIWidget {
public:
    /// An empty tree.
    KXUITreeList();
    ~KXUITreeList() override;

    /// Adds a node to what another holds. @param parent 0 for the top. @param text copied. @param before one
    /// that the parent holds, which is to come next; 0 for the end. @return its number; 0 for a null @a text
    /// or another number.
    int add(int parent, const char* text, int before = 0);
    /// Moves a node, with all that it holds, to where add() would put one. @return -1, or 0 if there are no
    /// such nodes or the node is or holds the new parent.
    int move(int node, int parent, int before = 0);
    /// Removes a node and all that it holds. @return -1, or 0 if there is no such node.
    int remove(int node);
    /// Removes all of them.
    void clear();
    /// Gives a node another text. @return -1, or 0 if there is no such node or @a text is null.
    int rename(int node, const char* text);
    /// Draws a picture before a node's text, as high as the row. @param node its number. @param icon not
    /// owned: it must live as long as the node has it; null for none.
    /// @return -1, or 0 if there is no such node.
    int setIcon(int node, KXTexture* icon);
    /// How many nodes there are, those that are not shown included.
    int count() const;
    /// A node's text, null if there is none. It belongs to the tree, until the text changes.
    const char* text(int node) const;
    /// What holds a node, 0 for the top.
    int parent(int node) const;
    /// How many nodes one holds itself. @param node 0 for the top.
    int childCount(int node) const;
    /// One of them, counted from 0; 0 if there is none.
    int child(int node, int index) const;

    /// Opens a node for a non-zero @a open, closes it for 0. @return -1, or 0 if there is no such node.
    int setOpen(int node, int open);
    /// -1 if a node is open, else 0.
    int isOpen(int node) const;

    /// The selected node, 0 for none. Where several can be, the one that the user came to last: keys move
    /// from it, and it may have been taken out again.
    int selectedNode() const;
    /// Selects a node, alone, opens what it is in and scrolls to it; 0 selects none.
    /// @return -1, or 0 if there is no such node.
    int setSelectedNode(int node);
    /// Lets the user select several nodes for a non-zero @a multiple; at first, and for 0, one.
    void setMultipleSelection(int multiple);
    /// -1 if a node is selected, else 0.
    int isSelected(int node) const;
    /// Takes a node into the selection for a non-zero @a selected, and opens what it is in; out of it for 0.
    /// @return -1, or 0 if there is no such node.
    int setSelected(int node, int selected);
    /// The selected node that is shown next below @a after, 0 for none: to walk through them, from 0 on.
    int nextSelectedNode(int after) const;
    /// Opens what a node is in and scrolls by as little as brings it into view.
    /// @return -1, or 0 if there is no such node.
    int scrollTo(int node);
    /// The node at a position in pixels, 0 if there is none.
    int nodeAt(KXPoint point);

    /// Gives the tree the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while the tree has the keyboard, else 0.
    int hasFocus() const;

    /// Takes the user's doing of one logic step in. @return -1 if the user changed what is selected, opened,
    /// closed or activated a node in this call, else 0.
    int poll();
    /// -1 if the user changed what is selected in the last poll(), else 0.
    int selectionChanged() const;
    /// The node that the user activated in the last poll(), by a second press or Return; 0 for none.
    int activatedNode() const;
    /// The last node that the user opened or closed in the last poll(), 0 for none.
    int toggledNode() const;

    /// Like _KXUIWidget::setFont().
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize().
    int setFontSize(int size) override;
    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors().
    void setColors(const KXUIColors& colors);
    /// Draws the tree into the current target. Texts that come into view are laid out: throws std::bad_alloc
    /// when memory is exhausted.
    void draw() override;
    int pollInPanel() override;                   ///< poll().
    int takesWheel() const override;              ///< -1.
    KXUIDescription description() const override; ///< The node that is selected is its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;
    std::unique_ptr<State> _state;
};
