#include "studio/Session.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <random>

// What the studio does to a sprite, without a window.

namespace {
std::vector<Frame> someFrames(int count, int from = 0) {
    std::vector<Frame> frames;
    for (int i = 0; i < count; ++i)
        frames.push_back({5, {static_cast<float>((from + i) * 8), 0, 8, 8}});
    return frames;
}

/// The order of the frames as their places on the sheet, a digit each.
std::string order(const Session& session) {
    std::string text;
    for (const Frame& frame : session.animation()->animation.frames)
        text += static_cast<char>('0' + static_cast<int>(frame.bounds.x) / 8);
    return text;
}

void choose(Session& session, std::set<int> frames) {
    session.choose({session.selection().animation, *frames.begin(), frames, -1});
}

Session withFrames(int count) {
    Session session;
    session.begin({});
    session.addFrames(someFrames(count));
    return session;
}

const KXImage& sheet() {
    static const KXImage image(80, 50, {0, 1, 0, 1});
    return image;
}

using Act = std::function<void(Session&, std::mt19937&)>;

int any(std::mt19937& random, int to) { return std::uniform_int_distribution<int>(-2, to)(random); }

Area anyArea(std::mt19937& random) {
    const auto number = [&] { return static_cast<float>(any(random, 60)); };
    return {number(), any(random, 9) == 0 ? NAN : number(), any(random, 60), any(random, 40)};
}

Selection anySelection(std::mt19937& random) {
    return {
        any(random, 6), any(random, 12), {any(random, 12), any(random, 12), any(random, 4)}, any(random, 5)};
}

Join anyJoin(std::mt19937& random) { return static_cast<Join>((any(random, 6) + 2) % 3); }

const std::vector<Act>& acts() {
    static const std::vector<Act> all = {
        [](Session& s, std::mt19937& r) { s.choose(anySelection(r)); },
        [](Session& s, std::mt19937& r) { s.chooseFrame(any(r, 10)); },
        [](Session& s, std::mt19937& r) { s.choose(anySelection(r)); },
        [](Session& s, std::mt19937&) { s.chooseAllFrames(); },
        [](Session& s, std::mt19937&) { s.addAnimation("walk"); },
        [](Session& s, std::mt19937& r) { s.renameAnimation("name " + std::to_string(any(r, 8))); },
        [](Session& s, std::mt19937& r) { any(r, 4) == 0 ? s.removeAnimation() : s.duplicateAnimation(); },
        [](Session& s, std::mt19937& r) { s.moveAnimation(any(r, 3)); },
        [](Session& s, std::mt19937& r) { s.setLoops(any(r, 1) > 0); },
        [](Session& s, std::mt19937& r) { s.addFrames(someFrames(any(r, 5), any(r, 9))); },
        [](Session& s, std::mt19937& r) {
            s.cut({anyArea(r), anyArea(r)});
        },
        [](Session& s, std::mt19937& r) { any(r, 3) == 0 ? s.removeFrames() : s.duplicateFrames(); },
        [](Session& s, std::mt19937&) { s.reverseFrames(); },
        [](Session& s, std::mt19937& r) {
            if (any(r, 6) == 0)
                s.pingPongFrames();
        },
        [](Session& s, std::mt19937& r) { s.moveFrames(any(r, 9)); },
        [](Session& s, std::mt19937& r) { s.shiftFrames(any(r, 4)); },
        [](Session& s, std::mt19937& r) { s.setFrameBounds(any(r, 9), anyArea(r), anyJoin(r)); },
        [](Session& s, std::mt19937& r) {
            s.setDurations({any(r, 5), any(r, 9)}, any(r, 99), anyJoin(r));
        },
        [](Session& s, std::mt19937& r) { s.addBox(anyArea(r)); },
        [](Session& s, std::mt19937& r) { s.renameBox("box " + std::to_string(any(r, 6))); },
        [](Session& s, std::mt19937& r) { any(r, 4) == 0 ? s.removeBox() : s.duplicateBox(); },
        [](Session& s, std::mt19937& r) { s.moveBox(any(r, 3)); },
        [](Session& s, std::mt19937& r) { s.setBox(any(r, 5), anyArea(r), anyJoin(r)); },
        [](Session& s, std::mt19937& r) { s.setBoxColor(static_cast<unsigned>(any(r, 9)), anyJoin(r)); },
        [](Session& s, std::mt19937& r) {
            s.setGrid({any(r, 9), 0, any(r, 20), 16, any(r, 2), 0}, anyJoin(r));
        },
        [](Session& s, std::mt19937& r) { s.setTexture(any(r, 2) ? "hero.png" : "bat.png"); },
        [](Session& s, std::mt19937& r) {
            const auto point = [&] { return KXPoint{float(any(r, 90)), float(any(r, 70))}; };
            const KXPixel color = {uint8_t(any(r, 3) * 40), 0, 0, uint8_t(any(r, 1) * 255)};
            s.paintLine(sheet(), point(), point(), color, anyJoin(r));
            if (any(r, 3) == 0)
                s.paintFill(sheet(), point(), color);
        },
        [](Session& s, std::mt19937&) { s.undo(); },
        [](Session& s, std::mt19937&) { s.redo(); },
        [](Session& s, std::mt19937&) { s.abandon(); },
    };
    return all;
}

/// What holds whatever was done.
void expectSound(const Session& session) {
    const Selection& chosen = session.selection();
    const int animations = static_cast<int>(session.project().animations.size());
    ASSERT_TRUE(chosen.animation >= -1 && chosen.animation < animations);
    ASSERT_LT(chosen.box, static_cast<int>(session.project().boxes.size()));
    for (const auto& each : session.project().animations)
        for (const Frame& frame : each->animation.frames)
            ASSERT_TRUE(frame.duration >= 0 && frame.bounds.width > 0 && frame.bounds.x == frame.bounds.x);
    if (session.animation() && !session.animation()->animation.frames.empty())
        ASSERT_TRUE(session.frame() && chosen.frames.count(chosen.frame));
    else
        ASSERT_TRUE(chosen.frames.empty() && !session.frame());
    // No name twice: the file would keep one of both.
    const Document document = documentOf(session.project());
    ASSERT_EQ(document.animations.size(), session.project().animations.size());
    ASSERT_EQ(document.boxes.size(), session.project().boxes.size());
}
} // namespace

TEST(Session, EverythingDoneIsUndoneAndDoneAgain) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Session session;
        Project first;
        if (seed % 2)
            first = projectOf({"hero.png", {{"hit", {1.5f, 2, 3, 4}}}, {{"walk", {0, someFrames(6)}}}});
        session.begin(first);
        const auto act = [&](int count) {
            for (int i = 0; i < count; ++i) {
                acts()[std::uniform_int_distribution<std::size_t>(0, acts().size() - 1)(random)](session,
                                                                                                 random);
                ASSERT_NO_FATAL_FAILURE(expectSound(session));
            }
        };
        act(200);
        const Project last = session.project();
        const Selection selection = session.selection();
        int steps = 0;
        for (; session.canUndo(); session.undo(), ++steps)
            ASSERT_FALSE(session.undoName().empty());
        EXPECT_TRUE(session.project() == first);
        EXPECT_TRUE(session.isSaved());
        for (; steps > 0; --steps) {
            const Project before = session.project();
            session.redo();
            ASSERT_FALSE(session.project() == before) << "a step that changes nothing";
            ASSERT_NO_FATAL_FAILURE(expectSound(session));
        }
        EXPECT_TRUE(session.project() == last && session.selection() == selection);
    }
}

TEST(Session, FramesAreOrdered) {
    const struct {
        const char* name;
        std::set<int> chosen;
        std::function<void(Session&)> act;
        const char* order;
        std::set<int> chosenThen;
    } cases[] = {
        {"to the front", {2, 4}, [](Session& s) { s.moveFrames(0); }, "240135", {0, 1}},
        {"to the end", {0, 3}, [](Session& s) { s.moveFrames(6); }, "124503", {4, 5}},
        {"into themselves", {1, 2}, [](Session& s) { s.moveFrames(2); }, "012345", {1, 2}},
        {"together", {1, 3}, [](Session& s) { s.shiftFrames(1); }, "024135", {3, 4}},
        {"back", {2, 3}, [](Session& s) { s.shiftFrames(-1); }, "023145", {1, 2}},
        {"past the end", {5}, [](Session& s) { s.shiftFrames(9); }, "012345", {5}},
        {"reversed", {1, 4}, [](Session& s) { s.reverseFrames(); }, "042315", {1, 4}},
        {"all reversed", {3}, [](Session& s) { s.reverseFrames(); }, "543210", {3}},
        {"there and back", {3}, [](Session& s) { s.pingPongFrames(); }, "0123454321", {3, 6, 7, 8, 9}},
        {"some there and back", {0, 1, 2}, [](Session& s) { s.pingPongFrames(); }, "0121345", {0, 3}},
        {"doubled", {1, 2}, [](Session& s) { s.duplicateFrames(); }, "01212345", {3, 4}},
        {"deleted", {0, 1, 5}, [](Session& s) { s.removeFrames(); }, "234", {0}},
        {"added", {1}, [](Session& s) { s.addFrames(someFrames(2, 7)); }, "01782345", {2, 3}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        Session session = withFrames(6);
        choose(session, each.chosen);
        each.act(session);
        EXPECT_EQ(order(session), each.order);
        EXPECT_EQ(session.selection().frames, each.chosenThen);
    }
    Session once = withFrames(3);
    once.setLoops(false);
    once.pingPongFrames();
    EXPECT_EQ(order(once), "01210") << "played once, it ends where it began";
}

TEST(Session, ADragIsOneStep) {
    Session session = withFrames(2);
    const Area before = session.frame()->bounds;
    const auto drag = [&](float to, Join join) { session.setFrameBounds(1, {to, 0, 8, 8}, join); };
    drag(20, Join::Begin);
    drag(30, Join::Continue);
    drag(40, Join::Begin); // the next one
    session.undo();
    EXPECT_EQ(session.frame()->bounds.x, 30);
    session.undo();
    EXPECT_EQ(session.frame()->bounds, before);
    EXPECT_EQ(session.undoName(), "Add frames");

    drag(20, Join::Begin);
    drag(before.x, Join::Continue); // back where it began: nothing was done,
    EXPECT_EQ(session.undoName(), "Add frames");
    drag(50, Join::Continue); // and yet it goes on
    EXPECT_EQ(session.undoName(), "Change bounds");
    session.abandon();
    EXPECT_EQ(session.frame()->bounds, before);
    EXPECT_FALSE(session.canRedo());
    session.abandon();
    EXPECT_EQ(session.undoName(), "Add frames") << "nothing was joined any more";
}

TEST(Session, NamesStayApart) {
    Session session = withFrames(1);
    EXPECT_TRUE(session.renameAnimation("walk"));
    session.duplicateAnimation();
    EXPECT_EQ(session.animation()->name, "walk 2");
    session.duplicateAnimation();
    EXPECT_EQ(session.animation()->name, "walk 3");
    EXPECT_FALSE(session.renameAnimation("walk"));
    EXPECT_FALSE(session.renameAnimation(""));
    EXPECT_TRUE(session.renameAnimation("walk 3")) << "its own";
    session.addBox({0, 0, 2, 2});
    session.addBox({0, 0, 2, 2});
    EXPECT_EQ(session.box()->name, "box 2");
    EXPECT_FALSE(session.renameBox("box"));
    EXPECT_NE(session.project().boxes[0].color, session.project().boxes[1].color);
}

// Against a flood by recursion on a picture of a few tiles, and what is drawn anew against the whole.
TEST(Session, PaintIsWhatWasPainted) {
    std::mt19937 random(5);
    Session session;
    session.begin({});
    KXImage expected(70, 40), shown(1, 1);
    Pixels last;
    const std::function<void(int, int, KXPixel, KXPixel)> flood = [&](int x, int y, KXPixel from,
                                                                      KXPixel to) {
        KXPixel* row = expected.row(y);
        if (x < 0 || x >= 70 || !row || std::memcmp(row + x, &from, sizeof from) != 0)
            return;
        row[x] = to;
        for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
            flood(x + dx, y + dy, from, to);
    };
    for (int i = 0; i < 80; ++i) {
        const KXPixel color = {uint8_t(i), uint8_t(i * 7), 9, 255};
        const int x = any(random, 69), y = any(random, 39), to = any(random, 80);
        if (i % 4 != 3) {
            session.paintLine(KXImage(70, 40), {float(x), float(y)}, {float(to), float(y)}, color, Join::No);
            for (int k = std::min(x, to); k <= std::max(x, to); ++k)
                expected.setPixel(k, y, KXColorOf(color));
        } else if (x >= 0 && y >= 0) {
            session.paintFill(KXImage(70, 40), {float(x), float(y)}, color);
            if (const KXPixel from = expected.row(y)[x]; std::memcmp(&from, &color, sizeof from) != 0)
                flood(x, y, from, color);
        }
        if (!session.project().picture)
            continue;
        session.project().picture->drawInto(shown, last);
        last = *session.project().picture;
        for (int row = 0; row < 40; ++row)
            ASSERT_EQ(std::memcmp(shown.row(row), expected.row(row), 70 * sizeof(KXPixel)), 0) << i;
    }
    while (session.canUndo())
        session.undo();
    EXPECT_FALSE(session.project().picture) << "the file's again";
    session.paintFill(KXImage(70, 40), {3, 3}, {});
    EXPECT_FALSE(session.canUndo()) << "that changes nothing";
}
