#include "Drawing.h"

#include <string>

#include <unistd.h>

// What games ask for by name in every frame, among as many others as a game has.
void benchLookups(Table& table) {
    constexpr int count = 100'000;
    table.report("KXTempString with a number", count, [] {
        for (int i = 0; i < count; ++i)
            KXTempString("Score %d", i);
    });
    table.report("KXRectToString", count, [] {
        for (int i = 0; i < count; ++i)
            KXRectToString({{1, 2}, {3, static_cast<float>(i)}});
    });
    const std::string path = KXTempString("/tmp/kobaltrix-bench-%d-", static_cast<int>(getpid()));
    constexpr int textures = 100;
    std::vector<std::string> files;
    const std::unique_ptr<KXTexture> picture = plainTexture(4);
    for (int i = 0; i < textures; ++i) {
        files.push_back(path + std::to_string(i) + ".png");
        picture->writeToPNG(files.back().c_str());
        KXTextureCacheLoad(files.back().c_str());
        KXRemoveFile(files.back().c_str());
    }
    table.report("KXTextureCacheLoad among 100 textures", count, [&] {
        for (std::size_t i = 0; i < count; ++i)
            KXTextureCacheLoad(files[i % textures].c_str());
    });
    if (!benchFont())
        return;
    constexpr int sizes = 20;
    for (int size = 1; size <= sizes; ++size)
        KXUISetGlobalFont(benchFont(), KXAliasModeTexture, size, KXZeroPoint);
    table.report("KXUIGlobalFontLineHeight(size) among 20 sizes", count, [] {
        for (int i = 0; i < count; ++i)
            KXUIGlobalFontLineHeight(1 + i % sizes);
    });
    table.report("KXUIGlobalFontStringBounds of 24 characters", count / 100, [] {
        for (int i = 0; i < count / 100; ++i)
            KXUIGlobalFontStringBounds(16, "Player 0001 has 000037 p.");
    });
}
