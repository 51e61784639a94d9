#include "Document.h"

#include <algorithm>
#include <cstdio>

static void appendPrintable(std::string& text, const std::string& name) {
    for (const char character : name) {
        const unsigned byte = static_cast<unsigned char>(character);
        if (byte >= 32 && byte != 127) {
            text += character;
            continue;
        }
        char escaped[5];
        std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
        text += escaped;
    }
}

std::string quoted(const std::string& name) {
    std::string text = "'";
    appendPrintable(text, name);
    return text += "'";
}

static std::string number(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

static std::string extent(std::int32_t width, std::int32_t height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

// In doubles, which hold every coordinate and every sum of two of them.
static bool isOn(const SheetSize& sheet, const Area& bounds) {
    const double x = static_cast<double>(bounds.x), y = static_cast<double>(bounds.y);
    return x >= 0 && y >= 0 && x + bounds.width <= sheet.width && y + bounds.height <= sheet.height;
}

std::vector<std::string> faultsOf(const Frame& frame, const std::optional<SheetSize>& sheet) {
    std::vector<std::string> faults;
    const std::string size = extent(frame.bounds.width, frame.bounds.height);
    if (frame.duration < 0)
        faults.push_back("has the negative duration " + std::to_string(frame.duration));
    if (frame.bounds.width < 1 || frame.bounds.height < 1)
        faults.push_back("has the size " + size + " and shows nothing");
    else if (sheet && !isOn(*sheet, frame.bounds))
        faults.push_back("of " + size + " lies outside the sheet of " + extent(sheet->width, sheet->height));
    return faults;
}

static std::string describe(const Animation& animation) {
    const std::size_t count = animation.frames.size();
    std::int32_t width = 0, height = 0;
    std::string durations;
    for (const Frame& frame : animation.frames) {
        width = std::max(width, frame.bounds.width);
        height = std::max(height, frame.bounds.height);
        durations.append(" ").append(std::to_string(frame.duration));
    }
    return std::to_string(count) + (count == 1 ? " frame, " : " frames, ") +
           (animation.loops ? "loop" : "once") + ", full size " + extent(width, height) + ", durations" +
           durations;
}

std::string describe(const Document& document) {
    std::string text = "texture: ";
    if (document.texture.empty())
        text += "none";
    else
        appendPrintable(text, document.texture);
    text += "\nanimations: " + std::to_string(document.animations.size()) + "\n";
    for (const auto& [name, animation] : document.animations) {
        text += "  ";
        appendPrintable(text, name);
        text += ": " + describe(animation) + "\n";
    }
    text += "boxes: " + std::to_string(document.boxes.size()) + "\n";
    for (const auto& [name, box] : document.boxes) {
        text += "  ";
        appendPrintable(text, name);
        text += ": at " + number(box.x) + ", " + number(box.y) + ", " + extent(box.width, box.height) + "\n";
    }
    return text;
}
