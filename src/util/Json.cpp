#include "util/Json.h"

#include "util/WholeFile.h"

#include <Kobaltrix/KXError.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <string_view>

using Json = nlohmann::json;

void _KXJsonValue::fail(const std::string& what) const { throw _KXJsonFault{_way + ": " + what}; }

_KXJsonKind _KXJsonValue::kind() const {
    return _json->is_boolean()  ? _KXJsonKind::Flag
           : _json->is_number() ? _KXJsonKind::Number
           : _json->is_string() ? _KXJsonKind::Text
           : _json->is_array()  ? _KXJsonKind::List
           : _json->is_object() ? _KXJsonKind::Object
                                : _KXJsonKind::Nothing;
}

bool _KXJsonValue::has(const char* key) const {
    if (!_json->is_object())
        fail("must be an object");
    const auto found = _json->find(key);
    return found != _json->end() && !found->is_null();
}

_KXJsonValue _KXJsonValue::member(const char* key) const {
    const std::string way = _way + (_way.ends_with(": ") ? "" : ".") + key;
    if (!has(key))
        throw _KXJsonFault{way + " is missing"};
    return {*_json->find(key), way};
}

std::vector<_KXJsonValue> _KXJsonValue::elements() const {
    if (!_json->is_array())
        fail("must be a list");
    std::vector<_KXJsonValue> values;
    values.reserve(_json->size());
    for (const Json& element : *_json)
        values.emplace_back(element, _way + "[" + std::to_string(values.size()) + "]");
    return values;
}

std::vector<_KXJsonValue> _KXJsonValue::elements(const char* key) const {
    return has(key) ? member(key).elements() : std::vector<_KXJsonValue>();
}

std::vector<std::pair<std::string, _KXJsonValue>> _KXJsonValue::members() const {
    if (!_json->is_object())
        fail("must be an object");
    std::vector<std::pair<std::string, _KXJsonValue>> members;
    for (const auto& [key, member] : _json->items())
        members.emplace_back(key, _KXJsonValue(member, _way + "." + key));
    return members;
}

std::vector<std::uint32_t> _KXJsonValue::cells(std::size_t wanted) const {
    if (!_json->is_array())
        fail("must be a list of numbers");
    if (_json->size() != wanted)
        fail("there are " + std::to_string(_json->size()) + " cells, not " + std::to_string(wanted));
    std::vector<std::uint32_t> numbers;
    numbers.reserve(wanted);
    for (const Json& number : *_json) {
        if (!number.is_number_unsigned() || number.get<std::uint64_t>() > 0xFFFFFFFFU)
            fail("cell " + std::to_string(numbers.size()) + " is no number of a tile");
        numbers.push_back(number.get<std::uint32_t>());
    }
    return numbers;
}

// Whole numbers may be written with a fraction of zeros.
std::int64_t _KXJsonValue::whole(std::int64_t least, std::int64_t most) const {
    const double value = number();
    if (value != std::floor(value))
        fail("must be a whole number");
    if (value < static_cast<double>(least) || value > static_cast<double>(most))
        fail("must be from " + std::to_string(least) + " to " + std::to_string(most));
    return static_cast<std::int64_t>(value);
}

double _KXJsonValue::number() const {
    if (!_json->is_number())
        fail("must be a number");
    const double value = _json->get<double>();
    if (!(std::fabs(value) <= 1e15))
        fail("is too large a number");
    return value;
}

const std::string& _KXJsonValue::text() const {
    if (!_json->is_string())
        fail("must be a text");
    return _json->get_ref<const std::string&>();
}

bool _KXJsonValue::flag() const {
    if (!_json->is_boolean())
        fail("must be true or false");
    return _json->get<bool>();
}

int _KXJsonValue::integer(const char* key, int without, int least, int most) const {
    return has(key) ? static_cast<int>(member(key).whole(least, most)) : without;
}

float _KXJsonValue::number(const char* key, float without) const {
    return has(key) ? static_cast<float>(member(key).number()) : without;
}

std::string _KXJsonValue::text(const char* key, const char* without) const {
    return has(key) ? member(key).text() : without;
}

bool _KXJsonValue::flag(const char* key, bool without) const {
    return has(key) ? member(key).flag() : without;
}

KXColor _KXJsonValue::color(const char* key, KXColor without) const {
    return has(key) && !member(key).text().empty() ? member(key).color() : without;
}

KXColor _KXJsonValue::color() const {
    const std::string digits = text().substr(text().starts_with('#') ? 1 : 0);
    if ((digits.size() != 6 && digits.size() != 8) ||
        digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        fail("must be a colour, #RRGGBB or #AARRGGBB");
    const auto value = static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
    const auto channel = [value](int shift) { return static_cast<int>(value >> shift & 255U); };
    return KXMakeColori(channel(16), channel(8), channel(0), digits.size() == 8 ? channel(24) : 255);
}

_KXJsonValue _KXJsonValue::named() const {
    const std::string name = has("name") && member("name").kind() == _KXJsonKind::Text ? text("name") : "";
    return {*_json, name.empty() ? _way : _way + " (" + name + ")"};
}

// Deeper than any editor nests. Values are let go of one within the other.
static constexpr int deepest = 200;

static bool isTooDeep(std::string_view json) {
    int depth = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (c == '"')
            isInText = !isInText;
        else if (c == '\\' && isInText)
            ++i; // what follows ends no text
        else if (!isInText && (c == '[' || c == '{') && ++depth > deepest)
            return true;
        else if (!isInText && (c == ']' || c == '}'))
            --depth;
    }
    return false;
}

static Json parse(const std::string& path) {
    if (path.ends_with(".tsx") || path.ends_with(".tmx") || path.ends_with(".tx"))
        throw _KXJsonFault{path + ": is XML; save it as JSON in the editor"};
    std::string content;
    if (!_KXReadWholeFile(path.c_str(), std::size_t{1} << 30, content))
        throw _KXJsonFault{KXError()};
    std::string_view json = content;
    if (json.starts_with("\xEF\xBB\xBF")) // a byte order mark
        json.remove_prefix(3);
    if (isTooDeep(json))
        throw _KXJsonFault{path + ": is nested too deeply"};
    try {
        return Json::parse(json);
    } catch (const Json::exception& error) {
        std::string what = error.what();
        what.erase(0, std::min(what.size(), what.find("] ") + 2)); // the other library's number
        throw _KXJsonFault{path + ": is no valid JSON: " + what};
    }
}

// JSON with something in it asks for memory when it is destroyed, and ends the process without: so it is
// emptied from the inside.
static void makeEmpty(Json& json) {
    if (!json.is_structured())
        return;
    for (Json& element : json)
        makeEmpty(element);
    json.clear();
}

_KXJsonDocument::_KXJsonDocument(std::string path)
    : _path(std::move(path)), _json(std::make_unique<Json>(parse(_path))) {}

_KXJsonDocument::~_KXJsonDocument() { makeEmpty(*_json); }
