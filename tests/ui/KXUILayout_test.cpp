#include "ui/UITest.h"

#include <deque>

namespace {
/// A widget of a size.
struct Block : _KXUIWidget {
    Block(float width, float height) { _KXUIWidget::setSize({width, height}); }
    Box box() const {
        const auto [at, size] = rect();
        return {int(at.x), int(at.y), int(at.x + size.width), int(at.y + size.height)};
    }
};

TEST(Layout, CellsLieInRowsColumnsAndGrids) {
    Block a(10, 5), b(20, 8), c(4, 30);
    KXUILayout row(KXUIRow), column(KXUIColumn), grid(KXUIGrid, 2);
    row.add(a);
    row.add(b, 1);
    row.addSpace(6);
    row.setPadding(1);
    EXPECT_EQ(sides(row.size()), (Sides{10 + 4 + 20 + 4 + 6 + 2, 8 + 2}));
    row.setRect({100, 50}, {66, 20}); // what is left goes to b, and a single row takes all of the height
    EXPECT_EQ(a.box(), (Box{101, 51, 111, 69}));
    EXPECT_EQ(b.box(), (Box{115, 51, 155, 69}));
    row.setRect({100, 50}, {36, 20}); // what is missing, too
    EXPECT_EQ(b.box(), (Box{115, 51, 125, 69}));
    a.setVisible(0); // neither room nor a gap
    row.setRect({0, 0}, {32, 10});
    EXPECT_EQ(b.box(), (Box{1, 1, 21, 9}));
    a.setVisible(-1);

    KXUILayoutItem centred;
    centred.horizontal = KXUIPlaceCentre;
    centred.vertical = KXUIPlaceEnd;
    column.setGap(0);
    column.add(c, centred); // and b and a leave the row
    column.add(b, 3);
    column.add(a, 1);
    EXPECT_EQ(sides(row.size()), (Sides{6 + 2, 2}));
    column.setRect({0, 0}, {21, 55}); // natural heights of 30, 8 and 5, and 12 more, three of four to b
    EXPECT_EQ(c.box(), (Box{8, 0, 12, 30}));
    EXPECT_EQ(b.box(), (Box{0, 30, 21, 47}));
    EXPECT_EQ(a.box(), (Box{0, 47, 21, 55}));
    b.setSize({40, 9}); // another natural size
    EXPECT_EQ(sides(column.size()), (Sides{40, 30 + 9 + 5}));

    KXUILayoutItem wide;
    wide.stretchWidth = wide.stretchHeight = 1;
    wide.width = 300;
    for (Block* each : {&a, &b, &c})
        each == &b ? grid.add(b, wide) : grid.add(*each);
    grid.setRect({0, 0}, {100, 100});
    EXPECT_EQ(a.box(), (Box{0, 0, 10, 66}));
    EXPECT_EQ(b.box(), (Box{14, 0, 100, 66}));
    EXPECT_EQ(c.box(), (Box{0, 70, 10, 100}));
    EXPECT_EQ(grid.size().width, 10 + 4 + 300);
    grid.setRect({NAN, 0}, {1, 1});
    EXPECT_EQ(a.box()[3], 66);
}

TEST(Layout, WhatEndsLeavesAndNothingHoldsItself) {
    auto block = std::make_unique<Block>(10.0f, 10.0f);
    KXUILayout outer(KXUIRow);
    {
        KXUILayout inner(KXUIColumn);
        inner.add(*block);
        inner.add(*block); // again is once
        outer.add(inner);
        inner.add(outer);
        outer.add(outer);
        EXPECT_EQ(sides(outer.size()), (Sides{10, 10}));
        block.reset();
        EXPECT_EQ(sides(outer.size()), (Sides{0, 0}));
    }
    Block last(7, 7);
    outer.add(last);
    EXPECT_EQ(sides(outer.size()), (Sides{7, 7}));
    outer.setRect({0, 0}, {20, 20});
    outer.remove(last);
    outer.setRect({0, 0}, {30, 30});
    EXPECT_EQ(last.box()[2], 7); // natural along the row
}

using LayoutOfTexts = UITest;
TEST_F(LayoutOfTexts, LabelsAreWrappedAndCaptionsFollowed) {
    KXUILabel label;
    KXUIButton button;
    label.setText("one two three four");
    button.setText("ok");
    const float line = label.rect().size.height, word = button.rect().size.width;
    KXUILayout column(KXUIColumn);
    column.add(label);
    column.add(button);
    EXPECT_EQ(column.size().height, line + 4 + button.rect().size.height);
    const auto place = [&] { column.setRect({0, 0}, {label.rect().size.width, 200}); };
    column.setRect({0, 0}, {50, 200});
    EXPECT_GE(label.rect().size.height, 2 * line);
    EXPECT_EQ(button.rect().origin.y, label.rect().size.height + 4);
    label.setText("one"); // a shorter text, and what is below moves up
    place();
    EXPECT_EQ(button.rect().origin.y, line + 4);
    button.setText("a longer caption");
    EXPECT_GT(column.size().width, word);
    place();
    EXPECT_EQ(allocationsOf(place), 0u);
}

/// Layouts in layouts, as deep as it comes.
struct Tree {
    std::mt19937 random;
    std::deque<Block> blocks = {};
    std::deque<KXUILayout> layouts = {};

    int any(int below) { return int(random() % unsigned(below)); }
    KXUILayout& grow(int depth) {
        KXUILayout& layout = layouts.emplace_back(KXUILayoutKind(any(3)), 1 + any(3));
        layout.setGap(float(any(4)));
        layout.setPadding(float(any(3)));
        for (int i = any(5); i >= 0; --i) {
            KXUILayoutItem item;
            item.stretchWidth = float(any(3));
            item.stretchHeight = float(any(3));
            item.horizontal = KXUIPlace(any(4));
            item.vertical = KXUIPlace(any(4));
            if (depth > 0 && any(3) == 0)
                layout.add(grow(depth - 1), item);
            else
                layout.add(blocks.emplace_back(float(any(40)), float(any(40))), item);
            if (any(6) == 0 && !blocks.empty())
                blocks.back().setVisible(0);
        }
        return layout;
    }
};

// Given enough room, nothing lies outside or over another, and each has at least its natural size.
TEST(Layout, AnyLayoutHasRoomForAll) {
    for (unsigned round = 0; round < 300; ++round) {
        Tree tree{std::mt19937(round)};
        KXUILayout& root = tree.grow(3);
        std::vector<KXSize> natural;
        for (const Block& block : tree.blocks)
            natural.push_back(block.rect().size);
        const KXSize least = root.size();
        const int width = int(least.width) + tree.any(100), height = int(least.height) + tree.any(100);
        root.setRect({10, 20}, {float(width), float(height)});
        for (std::size_t i = 0; i < tree.blocks.size(); ++i) {
            if (!tree.blocks[i].isVisible())
                continue;
            const Box box = tree.blocks[i].box();
            ASSERT_TRUE(box[0] >= 10 && box[1] >= 20 && box[2] <= 10 + width && box[3] <= 20 + height)
                << round;
            const KXSize size = tree.blocks[i].rect().size;
            ASSERT_TRUE(size.width >= natural[i].width && size.height >= natural[i].height) << round;
            for (std::size_t j = 0; j < i; ++j) {
                const Box other = tree.blocks[j].box();
                ASSERT_TRUE(!tree.blocks[j].isVisible() || box[0] >= other[2] || other[0] >= box[2] ||
                            box[1] >= other[3] || other[1] >= box[3])
                    << round;
            }
        }
        const Box before = tree.blocks.front().box();
        root.setRect({10, 20}, {3, 2}); // and back: nothing is lost
        root.setRect({10, 20}, {float(width), float(height)});
        ASSERT_EQ(tree.blocks.front().box(), before) << round;
    }
}
} // namespace
