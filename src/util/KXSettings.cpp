#include <Kobaltrix/KXSettings.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "core/ground/Truncate.h"
#include "platform/FilePath.h"
#include "util/Quoted.h"
#include "util/SettingsText.h"
#include "util/WholeFile.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXSaveFile.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <limits>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;
using Value = _KXSettingsValue;

struct KXSettings::State {
    std::string path;
    KXSettingsState found = KXSettingsUnreadable;
    _KXSettingsText text;

    KXSettingsState read(std::string& told);
    KXSettingsState putAside(std::string& told, const std::string& why);
    bool write() const;
    bool take(const char* key, Value::Kind kind, Value& value) const;
    int set(const char* key, std::string values);
};

/// @param told why it cannot be had, if that is known; becomes that, or what the file holds.
KXSettingsState KXSettings::State::read(std::string& told) {
    std::error_code error;
    const fs::file_status status = fs::status(_KXFilePath(path), error);
    if (status.type() == fs::file_type::not_found && !path.empty())
        return KXSettingsFresh;
    if (!told.empty())
        return KXSettingsUnreadable;
    if (!fs::is_regular_file(status)) { // a pipe would be waited for
        told = path + ": is no file that can be read";
        return KXSettingsUnreadable;
    }
    const std::uintmax_t size = fs::file_size(_KXFilePath(path), error);
    if (!error && size > _KXSettingsText::largest)
        return putAside(told, path + ": is too large");
    if (!_KXReadWholeFile(path.c_str(), _KXSettingsText::largest, told)) {
        told = KXError();
        return KXSettingsUnreadable;
    }
    int line = 0;
    const _KXSettingsReason reason = text.read(told, line);
    return reason ? putAside(told, path + ", line " + std::to_string(line) + ": " + reason)
                  : KXSettingsLoaded;
}

KXSettingsState KXSettings::State::putAside(std::string& told, const std::string& why) {
    const char* const aside = KXPutFileAside(path.c_str());
    told = why + (aside ? std::string(". It is now ") + aside : std::string(". ") + KXError());
    return aside ? KXSettingsBroken : KXSettingsUnreadable;
}

bool KXSettings::State::write() const {
    if (found == KXSettingsUnreadable) {
        _KXReportError("%s: is not replaced, because it could not be read", path.c_str());
        return false;
    }
    const std::string content = text.write();
    if (content.size() <= _KXSettingsText::largest)
        return _KXReplaceFile(path.c_str(), content);
    _KXReportError("%s: cannot be written: the settings are too large", path.c_str());
    return false;
}

/// The first value of a key, if it is of that kind.
bool KXSettings::State::take(const char* key, Value::Kind kind, Value& value) const {
    std::string_view values = text.values(key ? key : "");
    return _KXTakeSettingsValue(values, value) && value.kind == kind;
}

int KXSettings::State::set(const char* key, std::string values) {
    const _KXSettingsReason reason =
        values.empty() ? "a number is infinite, or none" : text.set(key ? key : "", std::move(values));
    if (reason)
        _KXReportError("\"%s\": %s", key ? key : "", reason);
    return reason ? 0 : -1;
}

KXSettings::KXSettings() : _state(std::make_unique<State>()) {}
KXSettings::~KXSettings() = default;

KXSettingsState KXSettings::load(const char* path) {
    *_state = {path ? path : "", KXSettingsUnreadable, {}};
    std::string world = path ? "" : KXError(); // why there is none
    const KXSettingsState found = _KXAnswerTo(_KXQuestion::Settings, [&] { return _state->read(world); });
    const std::string told = _KXTextAnswer(world.c_str());
    int ignored = 0;
    if (found == KXSettingsLoaded && told != world) // a replay
        _state->text.read(told, ignored);
    else if (found == KXSettingsBroken || found == KXSettingsUnreadable)
        _KXSetError("%s", told.c_str());
    return _state->found = found;
}

int KXSettings::save() {
    const bool saved = _KXAnswerTo(_KXQuestion::Settings, [this] { return _state->write(); });
    if (!saved)
        _KXSetError("%s", _KXTextAnswer(KXError()).c_str());
    return saved ? -1 : 0;
}

int KXSettings::has(const char* key) const { return _state->text.has(key ? key : "") ? -1 : 0; }

double KXSettings::number(const char* key, double without, double least, double most) const {
    Value value;
    return _state->take(key, Value::Number, value) ? std::max(least, std::min(most, value.number)) : without;
}

int KXSettings::integer(const char* key, int without, int least, int most) const {
    Value value;
    return _state->take(key, Value::Number, value)
               ? std::max(least, std::min(most, _KXTruncate(value.number)))
               : without;
}

int KXSettings::flag(const char* key, int without) const {
    Value value;
    return _state->take(key, Value::Flag, value) ? -int{value.flag} : without;
}

std::string KXSettings::text(const char* key, const char* without) const {
    Value value;
    return _state->take(key, Value::Text, value) ? value.text : without ? without : "";
}

KXPoint KXSettings::point(const char* key, KXPoint without) const {
    const std::vector<double> both = numbers(key);
    constexpr double largest = std::numeric_limits<float>::max();
    const auto coordinate = [&](std::size_t i) {
        return static_cast<float>(std::clamp(both[i], -largest, largest));
    };
    return both.size() == 2 ? KXPoint{coordinate(0), coordinate(1)} : without;
}

std::vector<double> KXSettings::numbers(const char* key) const {
    std::vector<double> all;
    Value value;
    for (std::string_view rest = _state->text.values(key ? key : ""); _KXTakeSettingsValue(rest, value);)
        if (value.kind == Value::Number)
            all.push_back(value.number);
    return all;
}

std::vector<std::string> KXSettings::texts(const char* key) const {
    std::vector<std::string> all;
    Value value;
    for (std::string_view rest = _state->text.values(key ? key : ""); _KXTakeSettingsValue(rest, value);)
        if (value.kind == Value::Text)
            all.push_back(std::move(value.text));
    return all;
}

// With a blank before it, as on its line; empty for what is no number.
template<class Number>
static std::string written(Number number) {
    char digits[32] = " ";
    return std::isfinite(number)
               ? std::string(digits, std::to_chars(digits + 1, std::end(digits), number).ptr)
               : "";
}

int KXSettings::setNumber(const char* key, double number) { return _state->set(key, written(number)); }
int KXSettings::setNumber(const char* key, float number) { return _state->set(key, written(number)); }
int KXSettings::setNumber(const char* key, int number) { return _state->set(key, written(number)); }
int KXSettings::setFlag(const char* key, int yes) { return _state->set(key, yes ? " yes" : " no"); }

int KXSettings::setText(const char* key, const char* text) {
    return _state->set(key, ' ' + _KXQuoted(text ? text : ""));
}

int KXSettings::setPoint(const char* key, KXPoint point) {
    const std::string x = written(point.x), y = written(point.y);
    return _state->set(key, x.empty() || y.empty() ? "" : x + y);
}

int KXSettings::setNumbers(const char* key, const std::vector<double>& numbers) {
    const bool good = std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); });
    std::string values = good && numbers.empty() ? " " : "";
    for (const double number : numbers)
        values += good ? written(number) : "";
    return _state->set(key, std::move(values));
}

int KXSettings::setTexts(const char* key, const std::vector<std::string>& texts) {
    std::string values = texts.empty() ? " " : "";
    for (const std::string& text : texts)
        values += ' ' + _KXQuoted(text.c_str());
    return _state->set(key, std::move(values));
}

int KXSettings::remove(const char* key) { return _state->text.remove(key ? key : "") ? -1 : 0; }

void KXSettings::clear() { _state->text = {}; }
