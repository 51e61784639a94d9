#include "UITest.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace {
/// A tree with a village, which is open and holds a bakery with bread and cake, and a wood.
struct TreeList : UITest {
    TreeList() {
        tree.setRect({10, 10}, {120, 100});
        village = tree.add(0, "Village");
        bakery = tree.add(village, "Bakery");
        bread = tree.add(bakery, "Bread");
        tree.add(bakery, "Cake");
        well = tree.add(village, "Well");
        wood = tree.add(0, "Wood");
        tree.setOpen(village, -1);
        poll();
    }
    int poll() override { return tree.poll(); }
    /// What is shown: with a sign before nodes that can be opened or closed, what is selected in brackets.
    std::string shown(int node = 0) const {
        std::string text;
        for (int i = 0; i < tree.childCount(node); ++i) {
            const int child = tree.child(node, i);
            const std::string name = (tree.childCount(child) == 0 ? ""
                                      : tree.isOpen(child)        ? "-"
                                                                  : "+") +
                                     std::string(tree.text(child));
            text += (tree.isSelected(child) ? "[" + name + "] " : name + " ");
            if (tree.isOpen(child))
                text += shown(child);
        }
        return text;
    }
    std::string state() override {
        return (tree.activatedNode() ? "activated " : "") +
               std::string(tree.toggledNode() ? "toggled " : "") + shown();
    }
    KXPoint place(const std::string& name) const override {
        float row = 0, x = 0;
        return std::sscanf(name.c_str(), "row %f %f", &row, &x) == 2 ? KXPoint{11 + x, 11 + (row + 0.5f) * 18}
                                                                     : UITest::place(name);
    }
    KXUITreeList tree;
    int village, bakery, bread, well, wood;
};

TEST_F(TreeList, KeysOpenCloseAndGo) {
    tree.setFocus(-1);
    expectEach("Down -> told [-Village] +Bakery Well Wood; Right -> told -Village [+Bakery] Well Wood; "
               "Right -> told -Village [-Bakery] Bread Cake Well Wood; "
               "Right & Down & Right -> told -Village -Bakery Bread [Cake] Well Wood; "
               "Left -> told -Village [-Bakery] Bread Cake Well Wood; "
               "Down & Left & Left -> told toggled -Village [+Bakery] Well Wood; "
               "Left & Return -> told activated [-Village] +Bakery Well Wood; "
               "Return & Left -> told activated toggled [+Village] Wood; Left -> [+Village] Wood; Right & "
               "End -> told toggled "
               "-Village +Bakery Well [Wood]; Home -> told [-Village] +Bakery Well Wood; "
               "type w -> told -Village +Bakery [Well] Wood; type w -> told -Village +Bakery Well [Wood]");
}

TEST_F(TreeList, TheMouseOpensSelectsAndActivates) {
    expectEach("click row 1 20 -> told -Village -Bakery Bread Cake Well Wood; "
               "click row 2 60 -> told -Village -Bakery [Bread] Cake Well Wood; "
               "click row 2 60 -> told -Village -Bakery [Bread] Cake Well Wood; "
               "click row 0 5 -> told [+Village] Wood; "
               "click row 4 60 -> [+Village] Wood; press row 0 5 & at row 1 40 & release & type x -> "
               "told toggled [-Village] -Bakery Bread Cake Well Wood");
    EXPECT_EQ(tree.nodeAt(place("row 4 50")), well);
    EXPECT_EQ(tree.nodeAt(place("row 4 -50")), 0);
    tree.setMultipleSelection(-1);
    expectEach("click row 1 80 -> told -Village [-Bakery] Bread Cake Well Wood; "
               "hold Left Shift, click row 3 80 -> told -Village [-Bakery] [Bread] [Cake] Well Wood; "
               "let Left Shift, click row 0 5 & click row 0 5 -> told toggled [-Village] -Bakery Bread Cake "
               "Well Wood");
}

TEST_F(TreeList, NodesComeGoAndMoveWithTheirSelection) {
    EXPECT_EQ(tree.setSelectedNode(bread), -1);
    EXPECT_EQ(shown(), "-Village -Bakery [Bread] Cake Well Wood ") << "what it is in is open";
    EXPECT_EQ(tree.move(bakery, wood), -1);
    EXPECT_EQ(tree.selectedNode(), 0) << "out of sight";
    EXPECT_EQ(tree.setSelectedNode(bread), -1);
    EXPECT_EQ(tree.move(wood, 0, village), -1);
    EXPECT_EQ(shown(), "-Wood -Bakery [Bread] Cake -Village Well ");
    EXPECT_EQ(tree.move(wood, bread) + tree.move(wood, wood) + tree.move(0, wood) + tree.move(99, 0), 0);
    EXPECT_EQ(tree.add(wood, "x", well) + tree.add(99, "x") + tree.add(0, nullptr) + tree.remove(0), 0);
    EXPECT_EQ(tree.rename(bread, "Rolls"), -1);
    const int before = tree.add(bakery, "Flour", bread);
    EXPECT_EQ(shown(), "-Wood -Bakery Flour [Rolls] Cake -Village Well ");
    EXPECT_EQ(tree.remove(wood), -1);
    EXPECT_EQ(tree.count(), 2);
    EXPECT_EQ(tree.text(before), nullptr);
    EXPECT_EQ(shown(), "-Village Well ");
    tree.clear();
    EXPECT_EQ(tree.add(0, "new"), before + 1) << "no number is given twice";
    EXPECT_EQ(shown(), "new ");
}

TEST_F(TreeList, RandomChangesKeepTheRowsInOrder) {
    std::map<int, std::pair<int, bool>> model; // what holds a node, and whether it is open
    tree.clear();
    const auto below = [this](std::size_t n) { return static_cast<int>(random() % n); };
    const auto any = [&] {
        auto at = model.begin();
        std::advance(at, below(model.size() + 1));
        return at == model.end() ? 0 : at->first;
    };
    const auto holds = [&](int node, int other) {
        while (other && other != node)
            other = model[other].first;
        return other == node;
    };
    for (int i = 0; i < 2000; ++i) {
        const int node = any(), other = any();
        switch (below(6)) {
        case 0:
        case 1:
            model[tree.add(node, "n")] = {node, false};
            break;
        case 2: {
            const bool may = node && !holds(node, other);
            EXPECT_EQ(tree.move(node, other), may ? -1 : 0);
            if (may)
                model[node].first = other;
            break;
        }
        case 3:
            if (below(4) == 0 && node) {
                const auto old = model;
                tree.remove(node);
                std::erase_if(model, [&](const auto& each) {
                    for (int at = each.first; at; at = old.at(at).first)
                        if (at == node)
                            return true;
                    return false;
                });
            }
            break;
        case 4:
            if (node)
                tree.setOpen(node, model[node].second = below(2));
            break;
        default:
            if (node)
                tree.setSelectedNode(node);
            for (int at = node ? model[node].first : 0; at; at = model[at].first)
                model[at].second = true;
            EXPECT_EQ(tree.selectedNode(), node ? node : tree.selectedNode());
        }
        ASSERT_EQ(tree.count(), static_cast<int>(model.size()));
        int rows = 0;
        for (const auto& [id, each] : model) {
            ASSERT_EQ(tree.parent(id), each.first);
            bool isShown = true;
            for (int at = each.first; at; at = model[at].first)
                isShown &= model[at].second;
            rows += isShown;
            ASSERT_TRUE(isShown || !tree.isSelected(id));
        }
        tree.setSize({120, 2 + 18.0f * static_cast<float>(rows)});
        ASSERT_EQ(rows == 0 || tree.nodeAt({50, 10 + 18.0f * static_cast<float>(rows)}) != 0, true);
        poll();
    }
}

TEST_F(TreeList, IsDrawn) {
    const KXImage square(8, 8, {1, 1, 0, 1});
    KXTexture icon(square);
    tree.setIcon(wood, &icon);
    tree.setIcon(bread, &icon);
    tree.rename(well, "A {C0,1,1,1}name{EC} that does not fit");
    tree.setSelectedNode(bread);
    tree.setFocus(-1);
    tree.draw();
    tree.setSize({120, 60});
    tree.setOrigin({150, 10});
    tree.draw();
    const KXUIDescription said = tree.description();
    EXPECT_EQ(said.role + ": " + said.value + ", " + said.state, "tree: Bread, ");
    expectGolden(Image::of(*window), "ui/tree_list");
}

TEST_F(TreeList, AHundredThousandNodesCostAFrameOnlyThoseInView) {
    for (int i = 0; i < 100'000; ++i)
        tree.add(i % 10 ? bakery : village, "node");
    int deep = tree.add(0, "deep");
    for (int i = 0; i < 50'000; ++i)
        tree.setOpen(deep, -1), deep = tree.add(deep, "deeper");
    tree.setOpen(bakery, -1);
    tree.setFocus(-1);
    tree.setSelectedNode(deep);
    const auto frame = [&] { poll(), tree.draw(); };
    frame();
    step();
    EXPECT_EQ(allocationsOf(frame), 0u);
    act("Left");
    EXPECT_EQ(tree.selectedNode(), tree.parent(deep));
    EXPECT_EQ(tree.count(), 150'007);
    tree.remove(village);
    EXPECT_EQ(tree.count(), 50'002);
    tree.clear();
}
} // namespace
