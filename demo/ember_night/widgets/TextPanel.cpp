#include "TextPanel.h"

static constexpr float left = 280, width = 224, firstLine = 78, lineHeight = 54;
static constexpr const char* labels[] = {"Name", "Password", "Motto"};

TextPanel::TextPanel(const App& app) : _app(app) {
    float y = firstLine + 20;
    for (KXUITextEntry* entry : _entries) {
        entry->setRect({left, y}, {width, -1});
        y += lineHeight;
    }
    _name.setText("Ada");
    _name.setPlaceholder("Who keeps the fire?");
    _password.setText("embers");
    _password.setMasked(-1);
    _motto.setPlaceholder("At most 24 characters");
    _motto.setMaximumLength(24);
}

std::string TextPanel::step() {
    std::string news;
    for (std::size_t i = 0; i < std::size(labels); ++i) {
        KXUITextEntry& entry = *_entries[i];
        if (!entry.poll())
            continue;
        news = std::string(labels[i]) + (entry.entered() ? ", entered: " : ": ");
        news += entry.isMasked() ? std::to_string(entry.length()) + " characters" : entry.text();
    }
    return news;
}

// A colour span begins with "{C", the colour and "}" and ends with "{EC}".
void TextPanel::drawColors() const {
    constexpr const char* lines[] = {
        "{C1,0.851,0.541,1}Fire{EC} draws {C0.494,0.788,0.502,1}moths{EC}.",
        "{C0.494,0.788,0.502,1}Moths{EC} draw {C0.910,0.408,0.471,1}bats{EC}.",
        "{C0.910,0.408,0.471,1}R{EC}{C1,0.851,0.541,1}a{EC}{C0.494,0.788,0.502,1}i{EC}"
        "{C0.290,0.604,0.651,1}n{EC} puts the {C1,0.851,0.541,1}fire{EC} out."};
    float y = 274;
    for (const char* line : lines) {
        KXUIGlobalFontPrint({left, y}, Style::paper, line);
        y += 20;
    }
}

void TextPanel::draw() {
    _app.assets.picture("panel").drawNineSlice({264, 40}, {256, 400}, 8);
    KXUIGlobalFontPrint({left, 54}, Style::gold, "Text entries");
    float y = firstLine;
    for (std::size_t i = 0; i < std::size(labels); ++i) {
        KXUIGlobalFontPrint({left, y}, Style::paper, labels[i]);
        _entries[i]->draw();
        y += lineHeight;
    }
    const char* const count = KXTempString("%d of %d", _motto.length(), _motto.maximumLength());
    KXUIGlobalFontPrint({left + width - KXUIGlobalFontStringBounds(count).width, y - lineHeight},
                        Style::faded(Style::paper, 0.6f), count);
    KXUIGlobalFontPrint({left, 250}, Style::gold, "Colours in a text");
    drawColors();
    KXUIGlobalFontPrint({left, 352}, Style::gold, "Without a mouse");
    KXUIGlobalFontPrint({left, 376}, Style::paper, "Tab: next field or list");
    KXUIGlobalFontPrint({left, 394}, Style::paper, "F1, F2, F3: from the menus");
    KXUIGlobalFontPrint({left, 412}, Style::paper, "Control and O or S: files");
}
