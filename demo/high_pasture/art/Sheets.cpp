#include "Pictures.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace {
using Rows = std::vector<std::string_view>;

Color kidColor(char pixel) {
    switch (pixel) {
    case 'e':
        return 0x2a2238ff; // lines and eyes
    case 'w':
        return 0xfffaf0ff; // fur, from light to dark
    case 'W':
        return 0xe0d6ccff;
    case 'g':
        return 0xb8aca8ff;
    case 'h':
        return 0xd9a566ff; // horns
    case 'H':
        return 0xa8743fff;
    case 'p':
        return 0xf2a0a0ff; // nose and ears
    case 'b':
        return 0x5a4038ff; // hooves
    case 'r':
        return 0xd8493fff; // the collar
    default:
        return 0xffd04aff; // and its bell
    }
}

const Rows torso = {
    "            ee ee   ", "           ehhehhe  ", "           eHhehHe  ", "            eHeHe   ",
    "          eeewwwee  ", "         eppewwwwwe ", "          eeewwewwe ", "            ewwewwpe",
    " ee         ewwwwppe", "ewwe        ewwwwee ", "ewweeeeeeeeerrrrre  ", " ewwwwwwwwwwwwyye   ",
    " ewwwwwwwwwwwwyye   ", " ewwwwwwwwwwwwwwe   ", " ewWwwwwwwwwwwWwe   ", " eWWWWWWWwWWWWWWe   ",
};
const Rows standing = {" eWgeeWWe eWgeWWe   ", " eWe eWe  eWe eWe   ", " ebe ebe  ebe ebe   ",
                       " eee eee  eee eee   "};
const Rows stride = {" eWgeeWWeeeWgeeWWe  ", "eWge  eWeeWge  eWe  ", "ebe   ebeebe   ebe  ",
                     "ee     eeee     ee  "};
const Rows passing = {"  eWWgeee eWWgee    ", "  eWegee  eWegee    ", "  ebebe   ebebe     ",
                      "  eeeee   eeeee     "};
const Rows leap = {"eWWgeee   eeWWgWWe  ", "eWgee        egeWWe ", "ebe            eebe ",
                   "ee               ee "};
const Rows tuck = {" eWgWWee  eeWgWWe   ", "  eebebe   eebebe   ", "    eee      eee    ",
                   "                    "};

Color beetleColor(char pixel) {
    switch (pixel) {
    case 'e':
        return 0x2a2238ff;
    case 'r':
        return 0xd8493fff;
    case 'R':
        return 0xf2806aff;
    case 'd':
        return 0x9c2f35ff;
    default:
        return 0xffffffff;
    }
}

Color crowColor(char pixel) {
    switch (pixel) {
    case 'e':
        return 0x2a2238ff;
    case 'd':
        return 0x453d63ff;
    case 'D':
        return 0x655a8aff;
    case 'y':
        return 0xf0b040ff;
    default:
        return 0xffffffff;
    }
}

/// Frames side by side, and below them the same looking to the left.
Canvas sheetOf(const std::vector<Canvas>& frames) {
    const int width = frames[0].width(), height = frames[0].height();
    Canvas sheet(width * static_cast<int>(frames.size()), 2 * height);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        sheet.paste(width * static_cast<int>(i), 0, frames[i]);
        sheet.paste(width * static_cast<int>(i), height, frames[i], true);
    }
    return sheet;
}
} // namespace

Canvas drawKidSheet() {
    const struct {
        int sink;
        const Rows& legs;
    } poses[] = {{0, standing}, {1, standing}, {0, stride}, {1, passing},
                 {0, standing}, {1, passing},  {0, leap},   {0, tuck}};
    std::vector<Canvas> frames;
    for (const auto& [sink, legs] : poses) {
        Canvas& frame = frames.emplace_back(20, 20);
        frame.stamp(0, 16, legs, kidColor);
        frame.stamp(0, sink, torso, kidColor);
    }
    Canvas& lies = frames.emplace_back(20, 20); // on its back, legs up
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            lies.set(x, 19 - y, frames[0].at(x, y));
    return sheetOf(frames);
}

Canvas drawBeetleSheet() {
    const Rows shell = {"     eeeeee     ", "   eerRReddee   ", "  erRRrrerdddee ", " errRrrerrrrdeee",
                        " errrrrerrrddewe", "errrrrrerrdddeee", "edddddeddddddee ", " eeeeeeeeeeeee  "};
    const Rows legs[] = {{"  e  e  e  e    ", "  ee e  e  ee   "}, {"   e e  e e     ", "  ee  ee  ee    "}};
    std::vector<Canvas> frames;
    for (const Rows& pair : legs) {
        Canvas& frame = frames.emplace_back(16, 10);
        frame.stamp(0, 0, shell, beetleColor);
        frame.stamp(0, 8, pair, beetleColor);
    }
    Canvas& flat = frames.emplace_back(16, 10);
    flat.stamp(0, 6, {"   eeeeeeeeee   ", " eerRRreddddeee ", "eddddddedddddewe", " eeeeeeeeeeeeee "},
               beetleColor);
    return sheetOf(frames);
}

Canvas drawCrowSheet() {
    const Rows frames[] = {
        {"     eee            ", "     edDee          ", "      edDDe  eee    ", "      eddDDeedde    ",
         "ee     edDDeddwde   ", "edee   eddddddddyyy ", " edddeeddddddddeyy  ", "  eedddddddddde     ",
         "    eeeddddeee      ", "       eeee         ", "                    ", "                    "},
        {"                    ", "                    ", "             eee    ", "     eeeee  edde    ",
         "ee  eDDDDdeeddwde   ", "edeeeddDDDddddddyyy ", " edddeddddddddeeyy  ", "  eedddddddddde     ",
         "    eeeddddeee      ", "       eeee         ", "                    ", "                    "},
        {"                    ", "                    ", "             eee    ", "            edde    ",
         "ee      eeeeddwde   ", "edee  eeddddddddyyy ", " edddeeddddddddeyy  ", "  eedddDDDdddde     ",
         "    eeedDDDdee      ", "       edDDe        ", "       edDe         ", "        ee          "},
    };
    std::vector<Canvas> drawn;
    for (const Rows& rows : frames)
        drawn.emplace_back(20, 12).stamp(0, 0, rows, crowColor);
    return sheetOf(drawn);
}

Canvas drawBellSheet() {
    // A post with a bell that hangs still, or swings.
    constexpr std::array swings = {0, -2, 0, 2};
    Canvas sheet(20 * static_cast<int>(swings.size()), 28);
    for (std::size_t i = 0; i < swings.size(); ++i) {
        const int left = 20 * static_cast<int>(i), swing = swings[i];
        sheet.fillRect(left + 2, 2, 3, 26, 0x7f5233ff);
        sheet.fillRect(left + 2, 2, 1, 26, 0xb97f4aff);
        sheet.fillRect(left + 1, 1, 16, 3, 0x7f5233ff);
        sheet.fillRect(left + 1, 1, 16, 1, 0xd9a566ff);
        for (int y = 0; y < 10; ++y) {
            const int half = y < 2 ? 1 + y : y < 7 ? 3 : 4 + (y - 7) / 2;
            const int middle = left + 12 + swing * y / 8;
            sheet.fillRect(middle - half, 4 + y, 2 * half + 1, 1, 0xe0a030ff);
            sheet.fillRect(middle - half + 1, 4 + y, std::max(1, half - 1), 1, 0xffdf80ff);
            sheet.set(middle + half, 4 + y, 0xa86a20ff);
        }
        sheet.fillRect(left + 11 + swing * 12 / 8, 14, 3, 2, 0x7f4a18ff);
    }
    return sheet;
}

Canvas drawFlowerSheet() {
    // A bellflower that nods.
    constexpr std::array nods = {0, 1, 0, -1};
    Canvas sheet(16 * static_cast<int>(nods.size()), 16);
    for (std::size_t i = 0; i < nods.size(); ++i) {
        const int left = 16 * static_cast<int>(i), nod = nods[i];
        sheet.fillRect(left + 8, 3, 1, 3, 0x4f9a45ff);
        sheet.fillRect(left + 7 + (nod > 0), 2, 2, 1, 0x6fbf55ff);
        const Rows bell = {"   ee   ", "  eCCe  ", " eCcccb ", " eCcccb ",
                           "eCccccbe", "eCccccbe", "eccbccbe", " e e e e"};
        sheet.stamp(left + 4 + nod, 5, bell, [](char pixel) -> Color {
            switch (pixel) {
            case 'e':
                return 0x2b3aa0ff;
            case 'C':
                return 0xaec4ffff;
            case 'c':
                return 0x6a86f0ff;
            default:
                return 0x4a5fd0ff;
            }
        });
        sheet.set(left + 8 + nod, 13, 0xffe070ff);
    }
    return sheet;
}
