#include "NightList.h"

#include <cstdio>

static constexpr int nights = 100'000;
static constexpr float left = 548, width = 220;

// A number with commas between its thousands, of which there is one at most.
static std::string grouped(int number) {
    char text[32];
    if (number < 1000)
        std::snprintf(text, sizeof text, "%d", number);
    else
        std::snprintf(text, sizeof text, "%d,%03d", number / 1000, number % 1000);
    return text;
}

NightList::NightList(const App& app) : _app(app) {
    _list.setRect({left, 78}, {width, 326});
    _list.setTrackColor(Style::night);
    _list.setKnobColor(Style::wood);
    for (int night = 1; night <= nights; ++night) {
        const int moths = night * 37 % 61;
        const std::string text =
            std::to_string(night) +
            (night % 29 == 0 ? ": {C1,0.851,0.541,1}full moon{EC}" : ": " + std::to_string(moths) + " moths");
        _list.add(text.c_str());
    }
    _list.setSelectedIndex(0);
}

std::string NightList::step() {
    if (!_list.poll())
        return {};
    if (_list.activatedIndex() >= 0)
        return "List: night " + grouped(_list.activatedIndex() + 1) + " opened";
    return "List: night " + grouped(_list.selectedIndex() + 1) + " selected";
}

void NightList::draw() {
    _app.assets.picture("panel").drawNineSlice({532, 40}, {252, 400}, 8);
    KXUIGlobalFontPrint({left, 54}, Style::gold, KXTempString("List of %s nights", grouped(nights).c_str()));
    _list.draw();
    KXUIGlobalFontPrint({left, 412}, Style::faded(Style::paper, 0.6f), "Type a number to find it");
}
