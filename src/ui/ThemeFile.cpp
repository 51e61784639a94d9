// Themes from files.

#include "core/ground/ErrorSlot.h"
#include "platform/FilePath.h"
#include "ui/Theme.h"
#include "util/FolderListing.h"
#include "util/Json.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXUITheme.h>

#include <filesystem>
#include <map>
#include <string>

using Textures = std::map<std::string, std::unique_ptr<KXTexture>>;

struct _KXUIThemeParts {
    KXUITheme theme = KXUILightTheme();
    Textures textures = {};
};

namespace {
constexpr float most = 4096; // of whatever is measured in pixels

/// What a theme is made of while its file is read.
class Reader {
public:
    Reader(const _KXJsonValue& root, std::string path) : _root(root), _path(std::move(path)) {}
    void read();

    KXUITheme theme;
    Textures textures;

private:
    void readColors();
    void readSkins();
    void readFont();
    KXUISkin readSkin(const _KXJsonValue& skins, const _KXJsonValue& part, const char* state);
    KXTexture* texture(const _KXJsonValue& name);
    std::string beside(const std::string& name) const { return _KXPathIn(_KXParentOf(_path), name); }

    const _KXJsonValue& _root;
    std::string _path;
};

float numberWithin(const _KXJsonValue& of, const char* key, float without, float largest) {
    const float number = of.number(key, without);
    if (of.has(key) && (number < 0 || number > largest))
        of.member(key).fail("must be from 0 to " + std::to_string(static_cast<int>(largest)));
    return number;
}

/// So many numbers from 0 on.
std::vector<float> numbers(const _KXJsonValue& list, std::size_t count) {
    std::vector<float> all;
    for (const _KXJsonValue& each : list.elements()) {
        const double number = each.number();
        if (number < 0 || number > most)
            each.fail("must be from 0 to 4096");
        all.push_back(static_cast<float>(number));
    }
    if (all.size() != count)
        list.fail("must be " + std::to_string(count) + " numbers");
    return all;
}

void Reader::read() {
    const std::string base = _root.text("base", "light");
    if (base != "light" && base != "dark" && base != "contrast")
        _root.member("base").fail("must be light, dark or contrast");
    theme = base == "dark" ? KXUIDarkTheme() : base == "light" ? KXUILightTheme() : KXUIHighContrastTheme();
    theme.disabledOpacity = numberWithin(_root, "disabledOpacity", theme.disabledOpacity, 1);
    theme.ringWidth = numberWithin(_root, "ring", theme.ringWidth, most);
    theme.tooltip.delay = _root.integer("tooltipDelay", theme.tooltip.delay);
    if (_root.has("padding")) {
        const std::vector<float> padding = numbers(_root.member("padding"), 2);
        theme.padding = {padding[0], padding[1]};
    }
    readColors();
    readSkins();
    readFont();
}

void Reader::readColors() {
    if (!_root.has("colors"))
        return;
    constexpr struct {
        const char* name;
        KXColor KXUIPalette::*color;
    } known[] = {{"panel", &KXUIPalette::panel},
                 {"button", &KXUIPalette::button},
                 {"buttonHovered", &KXUIPalette::buttonHovered},
                 {"buttonPressed", &KXUIPalette::buttonPressed},
                 {"field", &KXUIPalette::field},
                 {"menu", &KXUIPalette::menu},
                 {"header", &KXUIPalette::header},
                 {"track", &KXUIPalette::track},
                 {"border", &KXUIPalette::border},
                 {"text", &KXUIPalette::text},
                 {"faintText", &KXUIPalette::faintText},
                 {"selection", &KXUIPalette::selection},
                 {"selectedText", &KXUIPalette::selectedText},
                 {"focus", &KXUIPalette::focus}};
    for (const auto& [name, value] : _root.member("colors").members()) {
        bool isKnown = false;
        for (const auto& row : known)
            if (name == row.name) {
                theme.palette.*row.color = value.color();
                isKnown = true;
            }
        if (!isKnown)
            value.fail("is no colour of a theme");
    }
    theme.tooltip.background = theme.palette.menu;
    theme.tooltip.border = theme.palette.border;
    theme.tooltip.text = theme.palette.text;
}

void Reader::readSkins() {
    if (!_root.has("skins"))
        return;
    constexpr const char* parts[KXUIPartCount] = {"panel",  "button", "field", "menu",
                                                  "header", "track",  "knob",  "selection"};
    const _KXJsonValue skins = _root.member("skins");
    for (int i = 0; i < KXUIPartCount; ++i)
        if (skins.has(parts[i])) {
            const _KXJsonValue part = skins.member(parts[i]);
            theme.skins[i] = {readSkin(skins, part, "normal"), readSkin(skins, part, "hovered"),
                              readSkin(skins, part, "pressed")};
        }
}

// What a part does not say is said for all.
KXUISkin Reader::readSkin(const _KXJsonValue& skins, const _KXJsonValue& part, const char* state) {
    KXUISkin skin;
    if (!part.has(state))
        return skin;
    const std::vector<float> source = numbers(part.member(state), 4);
    skin.source = {{source[0], source[1]}, {source[2], source[3]}};
    skin.texture = texture(part.has("image") ? part.member("image") : skins.member("image"));
    skin.corner = numberWithin(part, "corner", numberWithin(skins, "corner", skin.corner, most), most);
    skin.scale = numberWithin(part, "scale", numberWithin(skins, "scale", skin.scale, most), most);
    return skin;
}

KXTexture* Reader::texture(const _KXJsonValue& name) {
    std::unique_ptr<KXTexture>& texture = textures[name.text()];
    if (!texture) {
        KXImage image;
        if (image.load(beside(name.text()).c_str()))
            texture = std::make_unique<KXTexture>(image);
        if (!texture || texture->size().width <= 0)
            name.fail(std::string("cannot be loaded: ") + KXError());
    }
    return texture.get();
}

void Reader::readFont() {
    if (!_root.has("font"))
        return;
    const _KXJsonValue font = _root.member("font");
    const std::string path = beside(font.member("file").text());
    std::error_code error;
    if (!std::filesystem::is_regular_file(_KXFilePath(path), error))
        font.member("file").fail("is no file");
    theme.font = KXCachedFont(path.c_str(), KXAliasModeTexture, font.integer("size", 12, 1, 500));
}
} // namespace

KXUIThemeFile::KXUIThemeFile() : _parts(std::make_unique<_KXUIThemeParts>()) {}

static void dropPicturesFromTheme(const Textures& textures) {
    for (KXUIPartSkins& skins : _KXTheme.skins)
        for (KXUISkin* skin : {&skins.normal, &skins.hovered, &skins.pressed})
            for (const auto& [name, texture] : textures)
                if (skin->texture == texture.get())
                    skin->texture = nullptr;
}

KXUIThemeFile::~KXUIThemeFile() { dropPicturesFromTheme(_parts->textures); }

int KXUIThemeFile::load(const char* path) {
    if (!path) {
        _KXReportError("Unable to load a theme: no path");
        return 0;
    }
    try {
        const _KXJsonDocument document(path);
        const _KXJsonValue root = document.root();
        Reader reader(root, path);
        reader.read();
        dropPicturesFromTheme(_parts->textures);
        _parts->theme = reader.theme;
        _parts->textures = std::move(reader.textures);
        return -1;
    } catch (const _KXJsonFault& fault) {
        _KXReportError("Unable to load a theme: %s", fault.text.c_str());
        return 0;
    }
}

const KXUITheme& KXUIThemeFile::theme() const { return _parts->theme; }
