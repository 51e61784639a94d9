// The tutorial as a stranger follows it: its programs run and look as the page says, and the page has all
// that they consist of.

#include "support/Golden.h"
#include "support/Program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <vector>

namespace {
/// The programs' names, in their order.
std::vector<std::string> programs() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TUTORIAL))
        if (entry.path().extension() == ".cpp")
            names.push_back(entry.path().stem());
    std::ranges::sort(names);
    return names;
}

struct Tutorial : testing::TestWithParam<std::string> {};

TEST_P(Tutorial, ShowsWhatThePageShows) {
    const std::string name = GetParam();
    const TemporaryFolder folder;
    const Outcome run = runProgram(folder, "KOBALTRIX_USER_FOLDER=user '" PROGRAMS "/" + name + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(KXTestGallery(TUTORIAL).compare(Image::fromFile(folder / "shot.png"), name, {2, 40}).message,
              "");
    if (name.starts_with("10_")) {
        EXPECT_NE(contentOf(folder / "user/settings.txt").find("volume: 9"), std::string::npos);
        EXPECT_NE(contentOf(folder / "user/scores.txt").find("best: "), std::string::npos);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Tutorial, testing::ValuesIn(programs()),
                         [](const auto& program) { return program.param; });

#ifdef PAGE_ASSETS
TEST(ScenesPage, GoesFromScreenToScreenInTheDark) {
    const TemporaryFolder folder;
    for (const char* file : {"hero.spr", "hero.png", "font.ttf"})
        std::filesystem::copy_file(std::string(PAGE_ASSETS "/") + file, folder / file);
    const Outcome run = runProgram(folder, "'" PROGRAMS "/11_scenes'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    const Image shot = Image::fromFile(folder / "shot.png");
    EXPECT_EQ(KXTestGallery(TUTORIAL "/..").compare(shot, "scenes", {2, 40}).message, "");
}
#endif

/// A text without blanks at the beginnings of its lines.
std::string unindented(const std::string& text) {
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result += line.substr(std::min(line.size(), line.find_first_not_of(' '))) + '\n';
    return result;
}

/// The lines of a text.
std::set<std::string> linesOf(const std::string& text) {
    std::istringstream lines(text);
    std::set<std::string> result;
    for (std::string line; std::getline(lines, line);)
        result.insert(line);
    return result;
}

/// What the page tells of one program.
struct Step {
    std::vector<std::string> passages;
    std::set<std::string> lines; // of these, and what stands in `...` in the text
};

/// The page's steps, by their headings: "## 1. ..." and so on.
std::vector<Step> stepsOfThePage() {
    std::istringstream page(contentOf(TUTORIAL "/../tutorial.md"));
    std::vector<Step> steps;
    bool isInside = false, isCpp = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## " + std::to_string(steps.size() + 1) + ". "))
            steps.emplace_back();
        else if (steps.empty())
            continue;
        else if (line.starts_with("```")) {
            isInside = !isInside;
            if ((isCpp = line == "```cpp"))
                steps.back().passages.emplace_back();
        } else if (isCpp) {
            steps.back().passages.back() += line + '\n';
        } else if (!isInside) {
            std::istringstream spans(line);
            for (std::string text, code; std::getline(spans, text, '`') && std::getline(spans, code, '`');)
                steps.back().lines.insert(code);
        }
    }
    for (Step& step : steps)
        for (const std::string& passage : step.passages)
            step.lines.merge(linesOf(unindented(passage)));
    return steps;
}

TEST(TutorialPage, ShowsAllThatEachStepAddsAndNothingElse) {
    const std::vector<std::string> names = programs();
    const std::vector<Step> steps = stepsOfThePage();
    ASSERT_EQ(names.size(), 10u);
    ASSERT_EQ(steps.size(), names.size());
    std::set<std::string> before;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string program = unindented(contentOf(TUTORIAL "/" + names[i] + ".cpp"));
        for (const std::string& passage : steps[i].passages)
            EXPECT_NE(program.find(unindented(passage)), std::string::npos)
                << names[i] << " has no such passage:\n"
                << passage;
        for (const std::string& line : linesOf(program))
            EXPECT_TRUE(before.contains(line) || steps[i].lines.contains(line))
                << names[i] << " has a line that the page does not show:\n"
                << line;
        before = linesOf(program);
    }
}
} // namespace
