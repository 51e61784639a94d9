#include "UITest.h"

#include <algorithm>

namespace {
/// A table of names, nights and places of 260 pixels in 180, whose rows are 18 pixels high.
struct Table : UITest {
    Table() {
        table.setRect({10, 10}, {180, 120});
        table.addColumn({"Name", 80});
        table.addColumn({"Nights", 60, KXTextAlignRight, -1});
        table.addColumn({"Place", 120});
        for (const auto& [name, nights, place] : {std::tuple{"mo", "9", "Wood"},
                                                  {"Ärla", "100", "Bakery"},
                                                  {"Lil 10", "12", "Well"},
                                                  {"lil 9", "none", "Wood"}})
            table.addRow({name, nights, place});
        poll();
    }
    int poll() override { return table.poll(); }
    KXPoint place(const std::string& name) const override {
        float row = 0, x = 0;
        return std::sscanf(name.c_str(), "row %f %f", &row, &x) == 2 ? KXPoint{11 + x, 31 + (row + 0.5f) * 18}
                                                                     : UITest::place(name);
    }
    /// The first column as it stands, what is selected in brackets.
    std::string state() override {
        std::string text = (table.activatedRow() ? "activated " : "");
        text += table.sortChanged() ? "sorted " : "";
        for (int i = 0; i < table.rowCount(); ++i) {
            const int row = table.rowAt(i);
            const std::string name = table.cell(row, 0);
            text += table.isSelected(row) ? "[" + name + "] " : name + " ";
        }
        return text;
    }
    KXUITable table;
};

TEST_F(Table, TitlesSort) {
    expectEach("click row 1 20 -> told mo [Ärla] Lil 10 lil 9; "
               "press 30 20 -> mo [Ärla] Lil 10 lil 9; release -> told sorted [Ärla] lil 9 Lil 10 mo; "
               "type m & Return -> told activated Ärla lil 9 Lil 10 [mo]; "
               "click 30 20 -> told sorted [mo] Lil 10 lil 9 Ärla; "
               "click 110 20 -> told sorted lil 9 [mo] Lil 10 Ärla; press 110 20, at 30 20, release -> "
               "lil 9 [mo] Lil 10 Ärla; " // the press was on another title
               "Left Ctrl+3 -> told Ärla Lil 10 [mo] lil 9; Left Ctrl+3 -> told [mo] lil 9 Lil 10 Ärla");
    EXPECT_EQ(table.sortColumn(), 2);
    EXPECT_EQ(table.isDescending(), -1);
    EXPECT_EQ(table.sortBy(3) + table.sortBy(-2), 0);
    const int row = table.addRow({"new", nullptr, "Xanadu", "too much"});
    EXPECT_EQ(table.rowAt(0), row) << "where it is sorted to";
    EXPECT_EQ(table.setCell(row, 2, "A"), -1);
    EXPECT_EQ(table.rowAt(4), row);
    table.sortBy(-1);
    expectEach("poll 1 -> [mo] Ärla Lil 10 lil 9 new");
}

TEST_F(Table, RowsStayWhatTheyAre) {
    table.setMultipleSelection(-1);
    expectEach(
        "click row 0 20, hold Left Ctrl, click row 2 20 -> told [mo] Ärla [Lil 10] lil 9; let Left Ctrl, "
        "click 30 20 -> told sorted Ärla lil 9 [Lil 10] [mo]");
    const int lil = table.selectedRow();
    EXPECT_STREQ(table.cell(lil, 0), "Lil 10");
    EXPECT_EQ(table.removeRow(lil), -1);
    EXPECT_EQ(table.selectedRow(), 0);
    EXPECT_EQ(state(), "sorted Ärla lil 9 [mo] ");
    EXPECT_EQ(table.nextSelectedRow(0), table.rowAt(2));
    EXPECT_EQ(table.removeRow(lil) + table.setCell(lil, 0, "") + table.setCell(1, 3, "") +
                  table.setCell(1, 0, nullptr) + table.setSelectedRow(lil) + table.scrollTo(lil) +
                  table.rowAt(3) + table.isSelected(0),
              0);
    EXPECT_EQ(table.cell(lil, 0), nullptr);
    EXPECT_EQ(table.cell(1, 3), nullptr);
    EXPECT_EQ(table.rowUnder(place("row 1 20")), table.rowAt(1));
    table.clear();
    EXPECT_EQ(table.addRow(), 5) << "no number is given twice";
    EXPECT_STREQ(table.cell(5, 2), "");
    table.addColumn({"Late"});
    EXPECT_STREQ(table.cell(5, 3), "");
}

TEST_F(Table, BordersAreDraggedAndFit) {
    const auto widths = [&](const std::string& acts) {
        act(acts);
        return std::tuple(table.columnWidth(0), table.columnWidth(1), table.columnWidth(2));
    };
    EXPECT_EQ(widths("press 92 20, at 122 20, release, at 50 20"), std::tuple(110.0f, 60.0f, 120.0f));
    EXPECT_EQ(widths("press 122 20, at -100 20, release"), std::tuple(16.0f, 60.0f, 120.0f));
    const auto [fitted, second, third] = widths("wait 60, click 27 20 & click 27 20");
    EXPECT_TRUE(fitted > 40 && fitted < 70) << fitted;
    EXPECT_EQ(table.sortColumn(), -1);
    table.setColumnWidth(0, NAN);
    EXPECT_EQ(widths("click row 0 5, Left Ctrl+Left Shift+1"), std::tuple(fitted, second, third));
    EXPECT_EQ(table.setColumnWidth(3, 20) + table.fitColumn(-1), 0);
    // Columns that lie further to the right.
    table.setColumnWidth(0, 300);
    EXPECT_EQ(
        widths(
            "Right, hold Left Shift, at 50 60, wheel -1 & wheel -1 & wheel -1, let Left Shift, press 143 20"),
        std::tuple(300.0f, 60.0f, 120.0f)); // 24 and thrice 48 pixels
    EXPECT_EQ(widths("at 153 20, release"), std::tuple(310.0f, 60.0f, 120.0f)) << "the border was at 143";
}

TEST_F(Table, AHundredThousandRowsCostAFrameOnlyThoseInView) {
    for (int i = 0; i < 100'000; ++i)
        table.addRow({KXTempString("row %d", i * 7919 % 100'000), KXTempString("%d", i % 977), "x"});
    table.sortBy(1, -1);
    table.setFocus(-1);
    const auto frame = [&] { poll(), table.draw(); };
    frame();
    act("End");
    frame();
    step();
    EXPECT_EQ(allocationsOf(frame), 0u);
    EXPECT_STREQ(table.cell(table.selectedRow(), 1), "none");
    int greater = 0;
    for (int i = 1; i < table.rowCount() - 1; ++i)
        greater += std::atoi(table.cell(table.rowAt(i - 1), 1)) < std::atoi(table.cell(table.rowAt(i), 1));
    EXPECT_EQ(greater, 0);
}

TEST_F(Table, IsDrawn) {
    table.sortBy(1);
    table.setSelectedRow(2);
    table.setFocus(-1);
    table.addRow({"A {C1,1,0,1}name{EC} that is too long", "1", "Lighthouse in the north"});
    table.draw();
    table.setOrigin({200, 10});
    table.setSize({110, 80});
    act("Right, Right");
    table.draw();
    const KXUIDescription said = table.description();
    EXPECT_EQ(said.role + ": " + said.value + "; " + said.state,
              "table: Ärla, 100, Bakery; sorted by Nights");
    expectGolden(Image::of(*window), "ui/table");
}
} // namespace
