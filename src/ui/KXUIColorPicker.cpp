#include <Kobaltrix/KXUIColorPicker.h>

#include "render/DrawSink.h"
#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/HsvColor.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXUITextEntry.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

namespace {
constexpr KXColor white = {1, 1, 1, 1}, black = {0, 0, 0, 1};

/// The colour, which all parts share.
struct Picked {
    _KXColorBytes bytes = {255, 255, 255, 255}, old = bytes;
    _KXHsv hsv = _KXHsvOf(bytes, {});
    bool showsOpacity = false;
    KXUIColors colors = KXCurrentUIColors();

    void set(const _KXColorBytes& other) {
        bytes = other;
        hsv = _KXHsvOf(other, hsv);
    }
    void set(const _KXHsv& other) {
        hsv = other;
        bytes = _KXBytesOf(other, bytes[3]);
    }
    std::string digits() const {
        char text[10];
        std::snprintf(text, sizeof text, "#%02X%02X%02X", bytes[0], bytes[1], bytes[2]);
        const std::string all = text;
        std::snprintf(text, sizeof text, "%02X", bytes[3]);
        return showsOpacity ? all + text : all;
    }
    bool read(std::string_view text);
};

// Whether a text is a colour, which it then is.
bool Picked::read(std::string_view text) {
    if (text.starts_with('#'))
        text.remove_prefix(1);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (text.size() != (showsOpacity ? 8 : 6) && text.size() != 6)
        return false;
    if (error != std::errc() || end != text.data() + text.size())
        return false;
    if (text.size() == 6)
        number = number << 8 | bytes[3];
    const auto byte = [number](int shift) { return static_cast<std::uint8_t>(number >> shift); };
    set(_KXColorBytes{byte(24), byte(16), byte(8), byte(0)});
    return true;
}

// From the left to the right, or from the top to the bottom.
void drawGradient(KXRect rect, KXColor from, KXColor to, bool isUpright) {
    const auto corner = [&](float x, float y) {
        const KXPoint place = {rect.origin.x + x * rect.size.width, rect.origin.y + y * rect.size.height};
        return _KXMeshCorner{place, _KXWidgetColor((isUpright ? y : x) > 0 ? to : from)};
    };
    const _KXMeshCorner triangles[] = {corner(0, 0), corner(1, 0), corner(1, 1),
                                       corner(0, 0), corner(1, 1), corner(0, 1)};
    _KXDrawMesh(triangles, 6);
}

// What is seen through colours. Boxes that are larger than any window are not filled all over.
void drawCheckers(KXRect rect) {
    constexpr int side = 8, widest = 2048, highest = 256;
    constexpr KXColor light = {0.8f, 0.8f, 0.8f, 1}, dark = {0.55f, 0.55f, 0.55f, 1};
    KXDrawRectFill(rect, _KXWidgetColor(light));
    const int left = _KXWholePixel(rect.origin.x), top = _KXWholePixel(rect.origin.y),
              right = left + std::min(widest, _KXWholePixel(rect.size.width)),
              bottom = top + std::min(highest, _KXWholePixel(rect.size.height));
    for (int row = 0; top + row * side < bottom; ++row)
        for (int x = left + row % 2 * side; x < right; x += 2 * side) {
            const int y = top + row * side;
            KXDrawRectFill(_KXRectBetween(x, y, std::min(x + side, right), std::min(y + side, bottom)),
                           _KXWidgetColor(dark));
        }
}

enum class Kind { Square, Hue, Opacity };

/// The square or a bar.
struct Field final : _KXUIWidget {
    Field(Picked& of, Kind which) : picked(of), kind(which), hand(*this) {}

    struct Hand final : _KXControl {
        explicit Hand(Field& of) : _KXControl(of), field(of) { leavesReturn = true; }
        Field& field;

    protected:
        void pressed(const _KXModifiers&) override { field.follow(); }
        void dragged() override { field.follow(); }
        void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override {
            field.step(key.key, modifiers);
        }
    };
    Picked& picked;
    Kind kind;
    Hand hand;

    KXRect inside() const;
    KXPoint share() const;
    void put(KXPoint share);
    void follow();
    void step(int key, const _KXModifiers& modifiers);
    void drawFill() const;
    int pollInPanel() override { return hand.poll(); }
    _KXFocus* keyboardPart() override { return &hand; }
    KXUIDescription description() const override;
    void draw() override;
};

KXRect Field::inside() const {
    const auto [origin, size] = rect();
    return _KXRectBetween(_KXWholePixel(origin.x) + 1, _KXWholePixel(origin.y) + 1,
                          _KXWholePixel(origin.x) + _KXWholePixel(size.width) - 1,
                          _KXWholePixel(origin.y) + _KXWholePixel(size.height) - 1);
}

// Where the colour lies, as shares of width and height.
KXPoint Field::share() const {
    const auto [hue, saturation, value] = picked.hsv;
    return kind == Kind::Square ? KXPoint{static_cast<float>(saturation), static_cast<float>(1 - value)}
           : kind == Kind::Hue  ? KXPoint{0.5f, static_cast<float>(hue / 360)}
                                : KXPoint{static_cast<float>(picked.bytes[3]) / 255, 0.5f};
}

void Field::put(KXPoint share) {
    const double x = std::clamp(share.x, 0.0f, 1.0f), y = std::clamp(share.y, 0.0f, 1.0f);
    _KXHsv hsv = picked.hsv;
    if (kind == Kind::Opacity)
        picked.bytes[3] = static_cast<std::uint8_t>(std::lround(x * 255));
    else if (kind == Kind::Hue)
        hsv.hue = y * 360;
    else
        hsv.saturation = x, hsv.value = 1 - y;
    if (kind != Kind::Opacity)
        picked.set(hsv);
}

// The first pixel is one end, the last the other.
void Field::follow() {
    const auto [origin, size] = inside();
    if (size.width > 1 && size.height > 1)
        put({(KXMousePoint.x - origin.x) / (size.width - 1),
             (KXMousePoint.y - origin.y) / (size.height - 1)});
}

void Field::step(int key, const _KXModifiers& modifiers) {
    if (modifiers.alt || modifiers.control || modifiers.command)
        return;
    const KXPoint now = share();
    const float least = kind == Kind::Hue ? 1.0f / 360 : 1.0f / 255;
    const bool isUpright = kind != Kind::Opacity; // where Up and Page Up go up
    const auto moved = [&](float by, bool up) {
        return up ? KXPoint{now.x, now.y - by} : KXPoint{now.x + by, now.y};
    };
    const bool sidewaysMeansUp = kind == Kind::Hue; // a bar has one way only
    switch (key) {
    case KXKeyLeft:
        return put(moved(sidewaysMeansUp ? least : -least, sidewaysMeansUp));
    case KXKeyRight:
        return put(moved(sidewaysMeansUp ? -least : least, sidewaysMeansUp));
    case KXKeyUp:
        return put(moved(least, isUpright));
    case KXKeyDown:
        return put(moved(-least, isUpright));
    case KXKeyPageUp:
        return put(moved(10 * least, isUpright));
    case KXKeyPageDown:
        return put(moved(-10 * least, isUpright));
    case KXKeyHome:
        return put(kind == Kind::Hue ? KXPoint{0, 0} : KXPoint{0, now.y});
    case KXKeyEnd:
        return put(kind == Kind::Hue ? KXPoint{0, 1} : KXPoint{1, now.y});
    default:
        return;
    }
}

void Field::drawFill() const {
    const KXRect all = inside();
    if (kind == Kind::Square) {
        drawGradient(all, white, _KXColorOfBytes(_KXBytesOf({picked.hsv.hue, 1, 1}, 255)), false);
        drawGradient(all, {0, 0, 0, 0}, black, true);
    } else if (kind == Kind::Opacity) {
        KXColor clear = _KXColorOfBytes(picked.bytes), full = clear;
        clear.a = 0, full.a = 1;
        drawCheckers(all);
        drawGradient(all, clear, full, false);
    } else {
        constexpr int sixths = 6;
        const auto edge = [&all](int sixth) {
            return all.origin.y + std::round(all.size.height * static_cast<float>(sixth) / sixths);
        };
        for (int i = 0; i < sixths; ++i)
            drawGradient({{all.origin.x, edge(i)}, {all.size.width, edge(i + 1) - edge(i)}},
                         _KXColorOfBytes(_KXBytesOf({60.0 * i, 1, 1}, 255)),
                         _KXColorOfBytes(_KXBytesOf({60.0 * (i + 1), 1, 1}, 255)), true);
    }
}

// A mark that is seen on each colour.
static void drawMark(KXRect box) {
    KXDrawRect(box, _KXWidgetColor(black));
    KXDrawRect({{box.origin.x + 1, box.origin.y + 1}, {box.size.width - 2, box.size.height - 2}},
               _KXWidgetColor(white));
}

void Field::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    constexpr float reach = 4; // of the mark
    const KXRect all = inside();
    _KXDrawPart(KXUIPartTrack, rect(), KXUIPartNormal, picked.colors);
    if (all.size.width < 2 || all.size.height < 2)
        return;
    drawFill();
    const float x = std::floor(all.origin.x + share().x * (all.size.width - 1)),
                y = std::floor(all.origin.y + share().y * (all.size.height - 1));
    constexpr float side = 2 * reach + 1;
    const KXRect box = rect();
    drawMark(kind == Kind::Square ? KXRect{{x - reach, y - reach}, {side, side}}
             : kind == Kind::Hue  ? KXRect{{box.origin.x, y - reach / 2}, {box.size.width, reach + 1}}
                                  : KXRect{{x - reach / 2, box.origin.y}, {reach + 1, box.size.height}});
    hand.drawRing();
}

KXUIDescription Field::description() const {
    constexpr const char* names[] = {"saturation and value", "hue", "opacity"};
    KXUIDescription said = _described("slider", names[static_cast<int>(kind)]);
    const auto number = [](double value) { return std::to_string(static_cast<int>(std::lround(value))); };
    said.value = kind == Kind::Hue ? number(picked.hsv.hue)
                 : kind == Kind::Opacity
                     ? number(picked.bytes[3] / 2.55) + " %"
                     : number(picked.hsv.saturation * 100) + " %, " + number(picked.hsv.value * 100) + " %";
    return said;
}

/// The old colour beside the new one. A click on it takes the old one back.
struct Patch final : _KXUIWidget {
    explicit Patch(Picked& of) : picked(of) {}
    Picked& picked;

    int pollInPanel() override {
        const int back = clicked(KXMouseLeft);
        if (back)
            picked.set(picked.old);
        return back;
    }
    KXUIDescription description() const override { return _described("button", "old colour"); }
    void draw() override;
};

void Patch::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    const auto [origin, size] = rect();
    const float half = std::floor(size.width / 2);
    if (picked.showsOpacity)
        drawCheckers(rect());
    const auto shown = [this](const _KXColorBytes& bytes) {
        KXColor color = _KXColorOfBytes(bytes);
        if (!picked.showsOpacity)
            color.a = 1;
        return _KXWidgetColor(color);
    };
    KXDrawRectFill({origin, {half, size.height}}, shown(picked.old));
    KXDrawRectFill({{origin.x + half, origin.y}, {size.width - half, size.height}}, shown(picked.bytes));
    KXDrawRect(rect(), _KXColorsOf(KXUIPartField, KXUIPartNormal, picked.colors).border);
}
} // namespace

struct KXUIColorPicker::State {
    Picked picked;
    Field square{picked, Kind::Square}, hue{picked, Kind::Hue}, opacity{picked, Kind::Opacity};
    Patch patch{picked};
    KXUITextEntry entry;
    std::string shown; ///< The digits that the line was given last.
    bool wasTyping = false;

    void write();
    void read();
};

void KXUIColorPicker::State::write() {
    shown = picked.digits();
    entry.setText(shown.c_str());
}

/// What was typed changes the colour at once; the line is written anew when the typing is done.
void KXUIColorPicker::State::read() {
    const bool isTyping = entry.isFocused();
    if (std::strcmp(entry.text(), shown.c_str()) != 0 && picked.read(entry.text()))
        shown = entry.text();
    const bool ends = (wasTyping && !isTyping) || (entry.activated() && entry.entered());
    if (ends || (!isTyping && picked.digits() != shown))
        write();
    wasTyping = isTyping;
}

KXUIColorPicker::KXUIColorPicker() : _state(std::make_unique<State>()) {
    for (_KXUIWidget* part : std::initializer_list<_KXUIWidget*>{
             &_state->square, &_state->hue, &_state->opacity, &_state->entry, &_state->patch})
        add(*part);
    _state->entry.setMaximumLength(9);
    _state->opacity.setVisible(0);
    _state->write();
}

KXUIColorPicker::~KXUIColorPicker() = default;

void KXUIColorPicker::setColor(KXColor color) {
    _state->picked.set(_KXBytesOfColor(color));
    _state->picked.old = _state->picked.bytes;
    _state->write();
}

KXColor KXUIColorPicker::color() const { return _KXColorOfBytes(_state->picked.bytes); }
KXColor KXUIColorPicker::oldColor() const { return _KXColorOfBytes(_state->picked.old); }

void KXUIColorPicker::setShowsOpacity(int shows) {
    _state->picked.showsOpacity = shows;
    _state->opacity.setVisible(shows);
    _state->write();
    refit();
}

int KXUIColorPicker::poll() {
    const _KXColorBytes before = _state->picked.bytes;
    KXUIPanel::poll();
    _state->read();
    return _state->picked.bytes != before ? -1 : 0;
}

namespace {
constexpr float gap = 6, bar = 16; // beside and below the square
}

// What is below the square.
float KXUIColorPicker::_footHeight() const {
    const float line = std::max(bar, _idealSizeForText("").height);
    return gap + line + (_state->picked.showsOpacity ? gap + bar : 0);
}

void KXUIColorPicker::_placeParts() {
    const auto [origin, size] = rect();
    const auto [x, y] = origin;
    const KXSize square = {std::max(0.0f, size.width - gap - bar),
                           std::max(0.0f, size.height - _footHeight())};
    _state->square.setRect({x, y}, square);
    _state->hue.setRect({x + square.width + gap, y}, {bar, square.height});
    _state->opacity.setRect({x, y + square.height + gap}, {size.width, bar});
    const float line = std::max(bar, _idealSizeForText("").height), row = y + size.height - line,
                half = std::floor((size.width - gap) / 2);
    _state->entry.setRect({x, row}, {half, line});
    _state->patch.setRect({x + half + gap, row}, {size.width - half - gap, line});
}

void KXUIColorPicker::setOrigin(KXPoint origin) {
    KXUIPanel::setOrigin(origin);
    _placeParts();
}

void KXUIColorPicker::setSize(KXSize size) {
    _noteAskedSize(size);
    constexpr float widthByItself = 200;
    if (size.width == -1)
        size.width = widthByItself;
    if (size.height == -1) // for a square that is one
        size.height = size.width - gap - bar + _footHeight();
    KXUIPanel::setSize(size);
    _placeParts();
}

void KXUIColorPicker::refit() {
    _KXUIWidget::refit();
    _placeParts();
}

int KXUIColorPicker::setFont(const char* path, KXAliasMode mode) {
    _state->entry.setFont(path, mode);
    return KXUIPanel::setFont(path, mode);
}

int KXUIColorPicker::setFontSize(int size) {
    return KXUIPanel::setFontSize(size) ? _state->entry.setFontSize(size) : 0;
}

void KXUIColorPicker::setColors(const KXUIColors& colors) {
    KXUIPanel::setColors(colors);
    _state->picked.colors = colors;
    for (Field* field : {&_state->square, &_state->hue, &_state->opacity})
        field->hand.colors = colors;
    _KXColorEntry(_state->entry, colors);
}

int KXUIColorPicker::pollInPanel() { return poll(); }

KXUIDescription KXUIColorPicker::description() const {
    KXUIDescription said = _described("colour picker", nullptr);
    said.value = _state->picked.digits();
    return said;
}
