#include "Parts.h"

#include <SDL_opengl.h>

#include <memory>
#include <vector>

// A tool with a thousand widgets on its screen.
void benchWidgets(Table& table) {
    constexpr int count = 1000;
    if (benchFont())
        KXUISetGlobalFont(benchFont(), KXAliasModeTexture, 10, KXZeroPoint);
    std::vector<std::unique_ptr<KXUIButton>> buttons;
    std::vector<std::unique_ptr<KXUISlider>> sliders;
    std::vector<std::unique_ptr<KXUITextEntry>> entries;
    for (int i = 0; i < count; ++i) {
        const KXPoint at = {static_cast<float>(i % 20) * 40, static_cast<float>(i / 20) * 12};
        if (i % 4 == 0) {
            sliders.push_back(std::make_unique<KXUISlider>());
            sliders.back()->setRect(at, {38, 11});
        } else if (i % 10 == 1) {
            entries.push_back(std::make_unique<KXUITextEntry>());
            entries.back()->setText("text");
            entries.back()->setRect(at, {38, 11});
        } else {
            buttons.push_back(std::make_unique<KXUIButton>());
            buttons.back()->setText("Button");
            buttons.back()->setRect(at, {38, 11});
        }
    }
    table.report("polling 1,000 widgets", count, [&] {
        for (const auto& button : buttons)
            button->clicked(KXMouseLeft);
        for (const auto& slider : sliders)
            slider->poll();
        for (const auto& entry : entries)
            entry->poll();
    });
    const auto draw = [&] {
        for (const auto& button : buttons)
            button->draw();
        for (const auto& slider : sliders)
            slider->draw();
        for (const auto& entry : entries)
            entry->draw();
        KXFlushDrawBatch();
        glFinish();
    };
    table.report("drawing 1,000 widgets", count, draw);
    KXBeginDrawBatch();
    table.compare("drawing 1,000 widgets in a batch", "without a batch", 0, count, draw, [&] {
        KXEndDrawBatch();
        draw();
        KXBeginDrawBatch();
    });
    KXEndDrawBatch();
}
