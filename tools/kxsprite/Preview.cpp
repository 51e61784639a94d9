#include "Preview.h"

#include "AnimatedPreview.h"
#include "Display.h"
#include "Files.h"
#include "Paths.h"
#include "SpriteIO.h"

#include <Kobaltrix/KXSprite.h>
#include <Kobaltrix/Kobaltrix.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>

namespace {
constexpr KXColor background = {0.16f, 0.16f, 0.2f, 1}, cellColor = {0.24f, 0.24f, 0.3f, 1};
constexpr KXColor textColor = {1, 1, 1, 1}, boxColor = {1, 0.2f, 0.2f, 1};
constexpr int gap = 8, labelSize = 12, labelHeight = 18;
constexpr std::size_t mostOutlines = 1000000;                 // every box is drawn in every frame
constexpr std::int64_t lineWidth = 1600, largestSide = 16384; // what every graphics driver of today can hold

/// The room of one frame, so large that its boxes fit too; the frame's own corner is at (-left, -top).
struct Cell {
    double left = 0, top = 0, right = 1, bottom = 1;

    void include(double x, double y, double width, double height, double scale) {
        if (!std::isfinite(x) || !std::isfinite(y))
            throw Fault("a box has a position that is not a finite number");
        left = std::min(left, std::floor(x * scale));
        top = std::min(top, std::floor(y * scale));
        right = std::max(right, std::ceil((x + width) * scale));
        bottom = std::max(bottom, std::ceil((y + height) * scale));
    }
    std::int64_t width() const { return side(right - left); }
    std::int64_t height() const { return side(bottom - top); }

private:
    static std::int64_t side(double length) {
        if (!(length <= static_cast<double>(largestSide)))
            throw Fault("a frame or a box is too large to be drawn");
        return std::max<std::int64_t>(1, static_cast<std::int64_t>(length));
    }
};

/// One animation's place in the picture: a label, and below it the frames in one line or more.
struct Row {
    const std::string& name;
    std::int64_t frames, top, cellWidth, cellHeight, perLine;
    KXPoint corner; ///< Of a frame in its cell.

    KXPoint cell(std::int64_t i) const {
        const std::int64_t column = i % perLine, line = i / perLine;
        return {static_cast<float>(gap + column * (cellWidth + gap)),
                static_cast<float>(top + labelHeight + line * (cellHeight + gap))};
    }
};

struct Picture {
    int scale;
    std::vector<Row> rows;
    std::int64_t width = gap, height = gap;
};

Picture layOut(const Document& document, int scale) {
    Picture picture = {scale, {}};
    std::size_t outlines = 0;
    for (const auto& [name, animation] : document.animations) {
        Cell cell;
        for (const Frame& frame : animation.frames)
            cell.include(0, 0, frame.bounds.width, frame.bounds.height, scale);
        for (const auto& [title, box] : document.boxes)
            cell.include(static_cast<double>(box.x), static_cast<double>(box.y), box.width, box.height,
                         scale);
        const auto frames = static_cast<std::int64_t>(animation.frames.size());
        outlines += animation.frames.size() * document.boxes.size();
        const std::int64_t width = cell.width(), height = cell.height();
        const std::int64_t perLine = std::max<std::int64_t>(1, lineWidth / (width + gap));
        picture.rows.push_back({name,
                                frames,
                                picture.height,
                                width,
                                height,
                                perLine,
                                {static_cast<float>(-cell.left), static_cast<float>(-cell.top)}});
        picture.width = std::max(picture.width, gap + std::min(frames, perLine) * (width + gap));
        picture.height += labelHeight + (frames + perLine - 1) / perLine * (height + gap);
    }
    if (outlines > mostOutlines)
        throw Fault("has too many frames and boxes to be drawn");
    if (picture.width > largestSide || picture.height > largestSide)
        throw Fault("the picture would be too large: " + std::to_string(picture.width) + " x " +
                    std::to_string(picture.height));
    return picture;
}

/// The font of the labels; none, with a line about it, where it cannot be found.
std::unique_ptr<KXFont> openFont() {
    const char* chosen = std::getenv("KXSPRITE_FONT");
    for (const char* path : {chosen ? chosen : "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                             "/usr/share/fonts/TTF/DejaVuSans.ttf", "/usr/share/fonts/dejavu/DejaVuSans.ttf",
                             "/Library/Fonts/Arial.ttf"}) {
        auto font = std::make_unique<KXFont>(path, KXAliasModeTexture);
        if (font->setSize(labelSize))
            return font;
        if (chosen)
            break;
    }
    std::fprintf(stderr, "kxsprite: no font was found, so the rows have no labels (Debian's "
                         "fonts-dejavu-core has one; KXSPRITE_FONT names another)\n");
    return nullptr;
}

/// The library, drawing where nobody sees it.
class HiddenWindow {
public:
    HiddenWindow() {
        drawUnseen();
        if (!KXInit())
            throw Fault(std::string("nothing can be drawn: ") + KXError());
        try {
            _window = std::make_unique<KXWindow>("kxsprite", KXSize{64, 64});
            _window->setRenderContext();
        } catch (const std::bad_alloc&) {
            const std::string reason = KXError();
            KXDeInit();
            throw Fault("nothing can be drawn: " + reason);
        }
    }
    ~HiddenWindow() {
        _window.reset();
        KXDeInit();
    }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

private:
    std::unique_ptr<KXWindow> _window;
};

/// Draws the frames of one animation, which the sprite steps through by itself.
void drawRow(const Row& row, const Document& document, KXSprite& sprite) {
    const float scale = sprite.scale();
    const char* name = row.name.c_str();
    for (int i = 0; i < row.frames; ++i) {
        KXRect bounds = KXZeroRect;
        sprite.getFrameInfo(i, name, &bounds, nullptr);
        sprite.setFrameInfo(i, name, bounds, 1);
    }
    sprite.setAnimation(name);
    for (std::int64_t i = 0; i < row.frames; ++i, sprite.poll()) {
        const KXPoint cell = row.cell(i), at = {cell.x + row.corner.x, cell.y + row.corner.y};
        KXDrawRectFill({cell, {static_cast<float>(row.cellWidth), static_cast<float>(row.cellHeight)}},
                       cellColor);
        sprite.draw(at);
        for (const auto& [title, box] : document.boxes)
            KXDrawRect({{at.x + box.x * scale, at.y + box.y * scale},
                        {static_cast<float>(box.width) * scale, static_cast<float>(box.height) * scale}},
                       boxColor);
    }
}

/// Pixels that the labels need, within what a picture can be wide.
int widestLabel(const Picture& picture, KXFont* font) {
    float width = 0;
    for (const Row& row : picture.rows)
        if (font)
            width = std::max(width, font->stringBounds(quoted(row.name).c_str()).width);
    return static_cast<int>(std::min(width, static_cast<float>(largestSide - 2 * gap))) + 2 * gap;
}

void draw(const Picture& picture, const Document& document, KXSprite& sprite, const std::string& output) {
    const std::unique_ptr<KXFont> font = openFont();
    KXTexture target(std::max(static_cast<int>(picture.width), widestLabel(picture, font.get())),
                     static_cast<int>(picture.height));
    if (target.size().width == 0)
        throw std::bad_alloc();
    target.setRenderContext();
    sprite.setScale(static_cast<float>(picture.scale));
    KXDrawRectFill({KXZeroPoint, target.size()}, background);
    for (const Row& row : picture.rows) {
        if (font)
            font->print({gap, static_cast<float>(row.top)}, textColor, "%s", quoted(row.name).c_str());
        drawRow(row, document, sprite);
    }
    target.unsetRenderContext();
    if (!target.writeToPNG(output.c_str()))
        throw Fault(KXError(), output);
}
} // namespace

static void keepOnly(Document& document, const std::string& name) {
    const auto found = document.animations.find(name);
    if (found == document.animations.end())
        throw Fault("has no animation " + quoted(name));
    document.animations = {std::pair{name, std::move(found->second)}};
}

static bool isGif(const std::string& path) {
    std::string extension = textOf(pathOf(path).extension());
    for (char& letter : extension)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return extension == ".gif";
}

static void previewRows(const std::string& path, const Document& document, const PreviewSettings& settings) {
    const Picture picture = layOut(document, settings.scale);
    const HiddenWindow window;
    KXSprite sprite;
    sprite.load(textOf(std::filesystem::absolute(pathOf(path))).c_str()); // whose folder is that of the sheet
    try {
        draw(picture, document, sprite, settings.output);
    } catch (const std::bad_alloc&) {
        throw Fault(std::string("cannot be drawn: ") + KXError());
    }
}

void previewSprite(const std::string& path, const PreviewSettings& settings) {
    Document document = loadDocument(path);
    if (document.animations.empty())
        throw Fault("has no animations to draw");
    if (document.texture.empty())
        throw Fault("names no sheet to draw from");
    const std::string sheet = sheetBeside(path, document.texture);
    if (!sheetSize(sheet))
        throw Fault("its sheet " + quoted(sheet) + " is missing");
    if (!settings.animation.empty())
        keepOnly(document, settings.animation);
    if (!isGif(settings.output))
        return previewRows(path, document, settings);
    if (document.animations.size() > 1)
        throw Fault("has " + std::to_string(document.animations.size()) +
                    " animations, of which --animation has to name one");
    previewMoving(document.animations.begin()->second, sheet, settings);
}
