// Measures what the library's operations cost, each beside something to compare it with.

#include "Parts.h"

#include <cstdio>
#include <cstring>
#include <memory>

const char* benchFont() {
    static constexpr const char* path = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    return KXFileExists(path) ? path : nullptr;
}

static const struct {
    const char* name;
    void (*run)(Table&);
} parts[] = {
    {"sprites", benchSprites}, {"rects", benchRectangles}, {"text", benchText},
    {"widgets", benchWidgets}, {"network", benchNetwork},  {"files", benchFiles},
    {"lookups", benchLookups},
};

static int usage(FILE* out, int status) {
    std::fprintf(out, "usage: bench [--only PART]... [--json FILE]\n"
                      "  --only PART  one of:");
    for (const auto& part : parts)
        std::fprintf(out, " %s", part.name);
    std::fprintf(out, "\n  --json FILE  write the table to FILE\n");
    return status;
}

int main(int argc, char** argv) {
    std::vector<std::string> only;
    std::string json;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--only") == 0 && i + 1 < argc) {
            only.emplace_back(argv[++i]);
        } else if (std::strcmp(argv[i], "--json") == 0 && i + 1 < argc) {
            json = argv[++i];
        } else {
            const bool help = std::strcmp(argv[i], "--help") == 0;
            return usage(help ? stdout : stderr, help ? 0 : 2);
        }
    }
    for (const std::string& name : only) {
        bool known = false;
        for (const auto& part : parts)
            known |= name == part.name;
        if (!known) {
            std::fprintf(stderr, "bench: there is no part '%s'\n", name.c_str());
            return usage(stderr, 2);
        }
    }
    if (!KXInit(argv[0])) {
        std::fprintf(stderr, "bench: %s\n", KXError());
        return 1;
    }
    Table table(only);
    {
        KXWindow window("Bench", benchWindow);
        window.setRenderContext();
        for (const auto& part : parts)
            if (table.part(part.name))
                part.run(table);
    }
    KXDeInit();
    table.finish();
    if (!json.empty() && !table.writeJson(json)) {
        std::fprintf(stderr, "bench: %s: cannot be written\n", json.c_str());
        return 1;
    }
    return 0;
}
