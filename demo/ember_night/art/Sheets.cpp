#include "Pictures.h"

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <utility>

namespace {
using Rows = std::vector<std::string_view>;

Color heroColor(char pixel) {
    switch (pixel) {
    case 'h':
        return 0x8f3b2eff; // hat
    case 'H':
        return 0xc9553dff;
    case 's':
        return 0xf0b58aff; // skin
    case 'e':
        return 0x1a1626ff; // eyes and lines
    case 'd':
        return 0x24505dff; // coat, from dark to light
    case 'c':
        return 0x2f6b7aff;
    case 'C':
        return 0x4a9aa6ff;
    case 'b':
        return 0x4b3326ff; // boots, near and far
    case 'B':
        return 0x38261dff;
    default:
        return 0xffd98aff; // the lantern's light
    }
}

const Rows body = {
    "     eeeeee     ", "    ehHHHHhe    ", "    ehHHHHhe    ", "  eeehhhhhheee  ",
    "  ehhhhhhhhhhe  ", "   eessssssee   ", "    sesssesse   ", "    sesssesse   ",
    "    sssssssse   ", "    esssssse    ", "   ecCCCCCce    ", "  eccCCCCCcce   ",
    "  eccCCCCCccs   ", "  eccCCCCCcce   ", "  esccCCCcce    ", "   eccccccce    ",
};
const Rows lantern = {"eee", "eye", "yyy", "eye"};
const Rows standing = {"   eccceccce    ", "   eccceccce    ", "   ebbbebbbbe   ", "   eeeeeeeeee   "};
const Rows stride = {"   edddeccce    ", "  eddde eccce   ", " eBBBe   ebbbbe ", " eeeee   eeeeee "};
const Rows otherStride = {"   eccceddde    ", "  eccce eddde   ", " ebbbe   eBBBBe ", " eeeee   eeeeee "};
const Rows passing = {"    eccddde     ", "    ecccdde     ", "    ebbbbBBe    ", "    eeeeeeee    "};
const Rows tucked = {"   eccceddde    ", "   ebbbebBBBe   ", "   eeeeeeeeee   "};

Color batColor(char pixel) {
    switch (pixel) {
    case 'e':
        return 0x3a2450ff;
    case 'd':
        return 0x7a5a96ff;
    default:
        return 0xff8a8aff; // eyes
    }
}

Color mothColor(char pixel) {
    switch (pixel) {
    case 'w':
        return 0xf4e3c1ff;
    case 'g':
        return 0xe8824fff;
    default:
        return 0xffd98aff;
    }
}
} // namespace

// The same figure in another coat and hat.
static Color friendColor(char pixel) {
    switch (pixel) {
    case 'h':
        return 0x3f5f3aff;
    case 'H':
        return 0x6f9a58ff;
    case 'd':
        return 0x6e2f45ff;
    case 'c':
        return 0x8c3f57ff;
    case 'C':
        return 0xc05c74ff;
    default:
        return heroColor(pixel);
    }
}

static Canvas drawFigureSheet(Color (*palette)(char)) {
    // How far the body sinks, how far the lantern swings and hangs, and the legs.
    const struct {
        int sink, swing, hang;
        const Rows& legs;
    } frames[] = {
        {0, 0, 0, standing},    {1, 0, 1, standing}, {1, 0, 0, stride},  {0, -1, 1, passing},
        {1, 0, 0, otherStride}, {0, -1, 1, passing}, {0, 0, -4, tucked},
    };
    Canvas sheet(16 * static_cast<int>(std::size(frames)), 40);
    int x = 0;
    for (const auto& [sink, swing, hang, legs] : frames) {
        Canvas frame(16, 20);
        frame.stamp(0, 16, legs, palette);
        frame.stamp(0, sink, body, palette);
        frame.stamp(13 + swing, 12 + hang, lantern, palette);
        sheet.paste(x, 0, frame);
        sheet.paste(x, 20, frame, true);
        x += 16;
    }
    return sheet;
}

Canvas drawHeroSheet() { return drawFigureSheet(heroColor); }
Canvas drawFriendSheet() { return drawFigureSheet(friendColor); }

Canvas drawBatSheet() {
    const Rows frames[] = {
        {"ee          ee  ", "edee      eede  ", " eddee  eedde   ", "  edddeedddee   ", "   eeddddee     ",
         "    erddre      ", "     edde       ", "      ee        "},
        {"                ", "      ee ee     ", "  eee edded eee ", " eddddeddeddddee", "eddeedddddddeede",
         "ee   erddre   ee", "      edde      ", "       ee       "},
        {"                ", "                ", "      e  e      ", "     eddde      ", "   eeddddddee   ",
         "  edderddredde  ", " edde edde edde ", " ee    ee    ee "},
    };
    Canvas sheet(48, 10);
    int x = 0;
    for (const Rows& rows : frames) {
        sheet.stamp(x, 1, rows, batColor);
        x += 16;
    }
    return sheet;
}

Canvas drawMothSheet() {
    const Rows flight[] = {
        {" w   w  ", " ww ww  ", "  wyw   ", "   y    ", "   g    "},
        {"        ", "www www ", " wwyww  ", "   y    ", "   g    "},
        {"        ", "   y    ", "  wyw   ", " wwyww  ", " w g w  "},
    };
    Canvas sheet(48, 8);
    int x = 0;
    for (const Rows& rows : flight) {
        sheet.stamp(x, 1, rows, mothColor);
        x += 8;
    }
    for (int size = 1; size <= 3; ++size, x += 8) // a star that bursts and goes out
        for (int i = -size; i <= size; ++i) {
            if (size == 3 && std::abs(i) < 2)
                continue;
            const Color color = mothColor(std::abs(i) == size ? 'g' : 'y');
            sheet.set(x + 3 + i, 3, color), sheet.set(x + 3, 3 + i, color);
            if (std::abs(i) < size)
                sheet.set(x + 3 + i, 3 + i, color), sheet.set(x + 3 + i, 3 - i, color);
        }
    return sheet;
}

Canvas drawFireSheet() {
    constexpr int frames = 4;
    Canvas sheet(16 * frames, 16);
    // From the outside in: what remains of the flame's height, and its colour.
    const std::pair<double, Color> layers[] = {
        {1, 0xc9553dff}, {0.72, 0xe8824fff}, {0.42, 0xffd98aff}, {0.18, 0xfff4d6ff}};
    for (int frame = 0; frame < frames; ++frame) {
        const int left = 16 * frame;
        for (const auto& [share, color] : layers)
            for (int x = 2; x < 14; ++x) {
                const double fromMiddle = std::abs(x - 7.5) / (6.5 * std::sqrt(share));
                const double lick = 2.2 * std::sin(frame * std::numbers::pi / 2 + x * 1.4);
                const int height = static_cast<int>(share * (13 * (1 - fromMiddle * fromMiddle) + lick));
                if (height > 0)
                    sheet.fillRect(left + x, 14 - height, 1, height, color);
            }
    }
    return sheet;
}
