// Settings and saves: what is saved comes back, and what is damaged is put aside, never lost.

#include <Kobaltrix/KXSettings.h>

#include "core/ground/ErrorSlot.h"
#include "support/TemporaryFolder.h"
#include "util/SettingsText.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXSaveFile.h>
#include <gtest/gtest.h>

#include <bit>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <random>
#include <system_error>

namespace {
namespace fs = std::filesystem;

const std::string whole = "kobaltrix settings 1\n"
                          "# by hand\n"
                          "volume: 0.80\n"
                          "\n"
                          "full screen : yes\n"
                          "name: \"A \\\"d\\\\a\\x0a\"\n"
                          "mixed:\t1 no \"two\" 2.5e1 \"\"\n"
                          "nothing:\n"
                          "end\n";

struct Settings : testing::Test {
    std::string told() const { return KXError(); }

    const TemporaryFolder folder;
    const std::string file = folder / "settings.txt", aside = file + ".broken";
    KXSettings settings;
};

TEST_F(Settings, AreReadAsTheyStandAndElseAsTheGameSays) {
    EXPECT_EQ(settings.load(file.c_str()), KXSettingsFresh);
    EXPECT_EQ(settings.number("volume", 0.5), 0.5);
    for (const std::string& content : {whole, whole.substr(0, whole.size() - 1), whole + "\n\r\n"}) {
        folder.write("settings.txt", content);
        EXPECT_EQ(settings.load(file.c_str()), KXSettingsLoaded) << told();
        EXPECT_EQ(settings.number("volume", 0.5), 0.8);
        EXPECT_EQ(settings.number("volume", 0.5, 1, 2), 1);
        EXPECT_EQ(settings.integer("volume", 5), 0);
        EXPECT_EQ(settings.integer("mixed", 5, -3, 0), 0);
        EXPECT_EQ(settings.flag("full screen", 0), -1);
        EXPECT_EQ(settings.text("name", nullptr), "A \"d\\a\n");
        EXPECT_EQ(settings.numbers("mixed"), (std::vector<double>{1, 25}));
        EXPECT_EQ(settings.texts("mixed"), (std::vector<std::string>{"two", ""}));
        EXPECT_EQ(settings.has("nothing"), -1);
        // Of another kind, or not there.
        EXPECT_EQ(settings.text("volume", "none") + settings.text(nullptr, "."), "none.");
        EXPECT_EQ(settings.flag("name", 7) + settings.flag("mixed", 1), 8);
        EXPECT_EQ(settings.number("nothing", 3), 3);
        EXPECT_EQ(settings.point("volume", {1, 2}).y, 2);
        EXPECT_EQ(settings.has("Volume"), 0);
    }
}

TEST_F(Settings, KeepWhatNobodyAsksFor) {
    folder.write("settings.txt", whole);
    settings.load(file.c_str());
    settings.setNumber("new", 0.1f);
    settings.setNumber("volume", 1);
    settings.setFlag("shakes", 0);
    settings.setNumbers("full screen", {});
    EXPECT_EQ(settings.remove("mixed") + settings.remove("mixed"), -1);
    EXPECT_EQ(settings.save(), -1) << told();
    EXPECT_EQ(contentOf(file), "kobaltrix settings 1\n# by hand\nvolume: 1\n\nfull screen: \n"
                               "name: \"A \\\"d\\\\a\\x0a\"\nnothing:\nnew: 0.1\nshakes: no\nend\n");
    settings.clear();
    EXPECT_EQ(settings.save(), -1);
    EXPECT_EQ(contentOf(file), "kobaltrix settings 1\nend\n");
}

// Whatever is set comes back after any number of other changes, bit by bit.
TEST_F(Settings, ComeBackAsTheyWere) {
    std::mt19937_64 random(7);
    std::map<std::string, std::string> texts;
    std::map<std::string, std::vector<double>> numbers;
    for (int round = 0; round < 20; ++round) {
        settings.load(file.c_str());
        for (int i = 0; i < 400; ++i) {
            const std::string key = "key \xc3\xa9" + std::to_string(random() % 90);
            texts.erase(key);
            numbers.erase(key);
            std::vector<double> some(random() % 4);
            for (double& number : some)
                do
                    number = std::bit_cast<double>(random());
                while (!std::isfinite(number));
            std::string text;
            for (std::size_t length = random() % 9; text.size() < length;)
                text += static_cast<char>(1 + random() % 255);
            if (const auto what = random() % 3; what == 0)
                settings.remove(key.c_str());
            else if (what == 1 && settings.setNumbers(key.c_str(), some))
                numbers[key] = some;
            else if (settings.setText(key.c_str(), text.c_str()))
                texts[key] = text;
        }
        EXPECT_EQ(settings.save(), -1) << told();
        KXSettings again;
        ASSERT_EQ(again.load(file.c_str()), KXSettingsLoaded) << told();
        for (int i = 0; i < 90; ++i) {
            const std::string key = "key \xc3\xa9" + std::to_string(i);
            const auto text = texts.find(key);
            const auto list = numbers.find(key);
            ASSERT_EQ(again.text(key.c_str(), "none"), text == texts.end() ? "none" : text->second);
            ASSERT_EQ(again.numbers(key.c_str()),
                      list == numbers.end() ? std::vector<double>() : list->second);
        }
        again.setPoint("at", {0.1f, -1e-30f});
        EXPECT_EQ(again.point("at", {}).x, 0.1f);
        EXPECT_EQ(again.point("at", {}).y, -1e-30f);
    }
}

TEST_F(Settings, ThatAreCutOffArePutAside) {
    folder.write("settings.txt.broken", "older");
    for (std::size_t size = 0; size + 1 < whole.size(); ++size) { // but for the last line's end
        folder.write("settings.txt", whole.substr(0, size));
        ASSERT_EQ(settings.load(file.c_str()), KXSettingsBroken) << size;
        const std::string now = aside + "-" + std::to_string(size + 2);
        EXPECT_EQ(contentOf(now), whole.substr(0, size));
        EXPECT_TRUE(told().starts_with(file + ", line ") && told().ends_with(". It is now " + now)) << told();
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(settings.has("volume"), 0) << "half a file was believed";
    }
    EXPECT_EQ(contentOf(aside), "older");
    settings.setNumber("volume", 1);
    EXPECT_EQ(settings.save(), -1) << told();
    EXPECT_EQ(settings.load(file.c_str()), KXSettingsLoaded);
}

TEST_F(Settings, ThatAreDamagedSayWhere) {
    const std::string begin = "kobaltrix settings 1\n", end = "end\n";
    const std::pair<std::string, std::string> rows[] = {
        {"kobaltrix settings 2\n" + end, "1: the file does not begin as one of settings"},
        {begin + "a: 1\na: 1\n" + end, "3: the key stands there twice"},
        {begin + "a 1\n" + end, "2: there is no key with a colon"},
        {begin + ": 1\n" + end, "2: there is no key with a colon"},
        {begin + end + "a: 1\n", "3: there is more behind the end"},
        {begin + std::string("a: \"\0\"\n", 7) + end, "1: it holds a byte that is 0"},
        {begin + std::string(_KXSettingsText::mostLines + 1, '\n') + end, "65538: there are too many lines"},
    };
    for (const auto& [content, error] : rows) {
        folder.write("settings.txt", content);
        EXPECT_EQ(settings.load(file.c_str()), KXSettingsBroken);
        EXPECT_TRUE(told().starts_with(file + ", line " + error)) << told();
    }
    for (const char* value : {"Ada", "\"Ada", "\"A\"da", "\"\\q\"", "\"\\x00\"", "\"\\x-1\"", "1,5", "inf",
                              "-nan", "1e999", "0x10", "1 2 three", "true"}) {
        folder.write("settings.txt", begin + "a: " + value + "\n" + end);
        EXPECT_EQ(settings.load(file.c_str()), KXSettingsBroken) << value;
    }
    folder.write("settings.txt", begin + "#" + std::string(_KXSettingsText::largest, '#') + "\n" + end);
    EXPECT_EQ(settings.load(file.c_str()), KXSettingsBroken);
    EXPECT_TRUE(told().starts_with(file + ": is too large. It is now ")) << told();
}

TEST_F(Settings, RefuseWhatCannotBeReadAgain) {
    settings.load(file.c_str());
    const double infinite = std::numeric_limits<double>::infinity();
    const std::string longKey(256, 'k'), huge(std::size_t(5) << 20, 'x');
    for (const char* key : {"", " a", "a ", "a:b", "#a", "a\nb", "\x7f", longKey.c_str()})
        EXPECT_EQ(settings.setNumber(key, 1), 0) << key;
    EXPECT_EQ(settings.setNumber(nullptr, 1) + settings.setNumber("a", std::nan("")) +
                  settings.setNumbers("a", {1, infinite}) + settings.setPoint("a", {0, -INFINITY}),
              0);
    EXPECT_EQ(told(), "\"a\": a number is infinite, or none");
    settings.clear();
    EXPECT_EQ(settings.save(), -1);
    const std::string before = contentOf(file);
    settings.setText("a", huge.c_str());
    EXPECT_EQ(settings.save(), 0);
    EXPECT_EQ(told(), file + ": cannot be written: the settings are too large");
    EXPECT_EQ(contentOf(file), before);
    settings.clear();
    for (std::size_t i = 0; i < _KXSettingsText::mostLines; ++i)
        settings.setFlag(std::to_string(i).c_str(), 1);
    EXPECT_EQ(settings.setFlag("one more", 1), 0);
    settings.remove("7");
    EXPECT_EQ(settings.setFlag("one more", 1), -1);
    EXPECT_EQ(settings.save(), -1) << told();
    EXPECT_EQ(settings.load(file.c_str()), KXSettingsLoaded) << told();
    EXPECT_EQ(settings.flag("one more", 0) + settings.flag("7", 0), -1);
}

TEST_F(Settings, NeverReplaceAFolder) {
    EXPECT_EQ(settings.save(), 0) << "nothing was loaded";
    for (const std::string& path : {folder.path(), std::string()}) {
        EXPECT_EQ(settings.load(path.c_str()), KXSettingsUnreadable) << path;
        EXPECT_TRUE(told().starts_with(path)) << told();
        EXPECT_EQ(settings.save(), 0) << path;
        EXPECT_EQ(told(), path + ": is not replaced, because it could not be read");
    }
    EXPECT_EQ(settings.load(nullptr), KXSettingsUnreadable);
    EXPECT_EQ(KXPutFileAside((folder / "nothing").c_str()), nullptr);
    EXPECT_TRUE(told().ends_with("cannot be put aside: " + std::system_category().message(ENOENT))) << told();
}

// Four times as much takes about four times as long.
TEST_F(Settings, CostNoMoreThanTheirSize) {
    const auto secondsFor = [&](int count) {
        const auto begin = std::chrono::steady_clock::now();
        settings.clear();
        for (int i = 0; i < count; ++i)
            settings.setNumber(("key" + std::to_string(i)).c_str(), i);
        settings.save();
        settings.load(file.c_str());
        for (int i = 0; i < count; ++i)
            settings.remove(("key" + std::to_string(i)).c_str());
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    settings.load(file.c_str());
    secondsFor(1000);
    const double few = secondsFor(10'000), many = secondsFor(40'000);
    EXPECT_LT(many, 12 * few) << few;
}
} // namespace
