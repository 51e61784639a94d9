// What the pages claim about bytes, and where they lead.

#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXSprite.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>
#include <vector>

namespace {
namespace fs = std::filesystem;

/// The bytes of a page's dump: lines of an offset, in columns 5 to 52 up to 16 bytes, and what they mean.
std::string dumpIn(const std::string& page) {
    std::istringstream text(contentOf(PROJECT "/docs/" + page));
    std::string bytes;
    for (std::string line; std::getline(text, line);) {
        const bool isRow = line.size() > 3 && std::isxdigit(line[0]) && std::isxdigit(line[1]);
        std::istringstream values(isRow && line.compare(2, 2, "  ") == 0 ? line.substr(4, 49) : "");
        for (int byte; values >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST(Documents, TheBytesOfASpriteFile) {
    KXSprite sprite;
    sprite.setTextureName("hero.png");
    sprite.addBoundingBox("hit", {{2, 3}, {10, 20}});
    sprite.addFrameInfo("idle", {{0, 0}, {16, 16}}, 5);
    const TemporaryFolder folder;
    sprite.save((folder / "hero.spr").c_str());
    EXPECT_EQ(dumpIn("sprites.md"), contentOf(folder / "hero.spr"));
}

/// What a pattern finds in a text.
std::vector<std::string> allOf(const char* pattern, const std::string& text) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.push_back(match->str());
    return found;
}

TEST(Documents, TheNumbersOfKeys) {
    std::istringstream page(contentOf(PROJECT "/docs/input.md"));
    std::string header = contentOf(PROJECT "/include/Kobaltrix/KXKeys.h");
    std::ranges::replace(header, '\n', ','); // behind the last one
    int rows = 0;
    for (std::string line; std::getline(page, line);) {
        const std::size_t middle = line.find(" | ");
        if (!line.starts_with("|") || line.find("KXKey") > middle || middle == line.npos)
            continue;
        const auto names = allOf("KXKey[A-Z]\\w*|KXKey\\d", line.substr(0, middle));
        const auto numbers = allOf("\\d+", line.substr(middle));
        for (std::size_t i = 0; i < names.size() && names.size() == numbers.size(); ++i, ++rows)
            EXPECT_NE(header.find(' ' + names[i] + " = " + numbers[i] + ','), header.npos) << line;
    }
    EXPECT_GT(rows, 60);
}

/// The pages.
std::vector<fs::path> pages() {
    std::vector<fs::path> found;
    for (const char* folder : {PROJECT, PROJECT "/docs"})
        std::ranges::copy_if(fs::directory_iterator(folder), std::back_inserter(found),
                             [](const fs::path& path) { return path.extension() == ".md"; });
    return found;
}

/// Whether a page has the heading that a link names: in small letters, blanks as dashes, nothing else.
bool hasHeading(const fs::path& page, const std::string& anchor) {
    std::istringstream text(contentOf(page.string()));
    for (std::string line; std::getline(text, line);) {
        std::string heading;
        for (const int c : line.substr(std::min(line.size(), line.find_first_not_of("# "))))
            if (std::isalnum(c & 255) || c == ' ' || c == '-')
                heading += c == ' ' ? '-' : static_cast<char>(std::tolower(c & 255));
        if (line.starts_with("##") && heading == anchor)
            return true;
    }
    return false;
}

/// A page without its blocks of code.
std::string proseOf(const fs::path& page) {
    std::istringstream text(contentOf(page.string()));
    std::string prose;
    bool isCode = false;
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("```"))
            isCode = !isCode;
        else if (!isCode)
            prose += line + '\n';
    }
    return prose;
}

TEST(Documents, EveryLinkLeadsSomewhere) {
    int links = 0;
    for (const auto& page : pages()) {
        const std::string text = proseOf(page);
        for (std::size_t at = text.find("]("); at != std::string::npos;
             at = text.find("](", at + 2), ++links) {
            const std::string link = text.substr(at + 2, text.find(')', at) - at - 2);
            const std::size_t hash = link.find('#');
            const std::string file = link.substr(0, hash);
            const auto target = file.empty() ? page : page.parent_path() / file;
            EXPECT_TRUE(fs::exists(target) &&
                        (hash == link.npos || hasHeading(target, link.substr(hash + 1))))
                << page << ": " << link;
        }
    }
    EXPECT_GT(links, 30);
}
} // namespace
