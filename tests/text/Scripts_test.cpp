#include "support/Golden.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXTextLayout.h>

namespace {
struct Script {
    const char *name, *title, *story;
};

// Marks that stand on letters, letters that join, reorder or change their shape, and numbers and brackets in
// a text that runs from the right.
constexpr Script scripts[] = {
    {"latin", "Évasion, Žižek",
     "Quick e\u0301tudes by Łódź's office staff:\tfjords, naïve cafés & ﬁve crêpes."},
    {"cyrillic", "Сова и ёж", "Съешь ещё этих мягких французских булок, да выпей же чаю (100 г)."},
    {"greek", "Ὀδύσσεια", "Ξεσκεπάζω την ψυχοφθόρα βδελυγμία — 24 ὧραι, ᾄδω."},
    {"arabic", "السَّلامُ عليكم", "الخطّ العربي (كتاب 12) يُكتب من اليمين: لا إله، قلم، مدرسة."},
    {"hebrew", "שָׁלוֹם", "דג סקרן שט לו בים זך (אך 3 פעמים) ולפתע פגש: OK, חבורה."},
    {"hindi", "हिन्दी क्ष", "ऋषियों को सताने वाले दुष्ट राक्षसों के राजा रावण का सर्वनाश, श्री 108।"},
    {"chinese", "中文排版", "天地玄黃,宇宙洪荒。日月盈昃,辰宿列張!寒來暑往,秋收冬藏(12)。"},
    {"emoji", "\U0001F600\U0001F989 ♜",
     "Owl \U0001F989, wave \U0001F30A, chess ♔♛, rain ☂ & 5\U0001F431 between words."},
};

struct Scripts : TextTest, testing::WithParamInterface<Script> {
    Scripts() : TextTest({232, 150}) {
        for (const char* fallback : {"Lohit Devanagari", "Droid Sans Fallback", "Symbola"}) {
            const char* const path = KXFindFont(fallback);
            if (!path)
                ADD_FAILURE() << fallback << " is missing: ./check installs it";
            else
                font.addFallback(KXFont(path, KXAliasModeTexture));
        }
    }
    KXFont font{testFont(), KXAliasModeTexture};
};

// As it was when somebody looked at it last, in a window, a texture and a batch.
TEST_P(Scripts, LookAsTheyShould) {
    const auto& [name, title, story] = GetParam();
    KXTextOptions options;
    options.width = 220;
    font.setSize(16);
    const KXTextLayout text(font, story, options);
    font.setSize(26);
    options.outline = 2;
    options.outlineColor = {0.7f, 0.2f, 0.1f, 1};
    options.align = KXTextAlignCentre;
    const KXTextLayout large(font, title, options);
    const auto draw = [&] {
        large.draw({6, 4}, white);
        text.draw({6, 52}, white);
    };
    const Image seen = picture(draw);
    expectGolden(seen, std::string("text/") + name);
    const auto inBatch = [&] {
        KXBeginDrawBatch();
        draw();
        KXEndDrawBatch();
    };
    EXPECT_EQ(differingPixels(picture(inBatch), seen), 0);
    KXTexture target(232, 150);
    target.setRenderContext();
    fill({0, 0, 0, 1});
    draw();
    Image inTexture = Image::of(target);
    for (Pixel& pixel : inTexture.pixels) // which edges of letters let through
        pixel.a = 255;
    EXPECT_EQ(differingPixels(inTexture, seen), 0);
    window->setRenderContext();
}
INSTANTIATE_TEST_SUITE_P(Of, Scripts, testing::ValuesIn(scripts),
                         [](const auto& script) { return std::string(script.param.name); });
} // namespace
