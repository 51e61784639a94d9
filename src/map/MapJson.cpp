#include "map/MapJson.h"

#include "util/WholeFile.h"

#include <Kobaltrix/KXError.h>

#include <cmath>

using Json = nlohmann::json;

void _KXMapValue::fail(const std::string& what) const { throw _KXMapFault{_way + ": " + what}; }

bool _KXMapValue::has(const char* key) const {
    if (!_json->is_object())
        fail("must be an object");
    const auto found = _json->find(key);
    return found != _json->end() && !found->is_null();
}

_KXMapValue _KXMapValue::member(const char* key) const {
    const std::string way = _way + (_way.ends_with(": ") ? "" : ".") + key;
    if (!has(key))
        throw _KXMapFault{way + " is missing"};
    return {*_json->find(key), way};
}

std::vector<_KXMapValue> _KXMapValue::elements() const {
    if (!_json->is_array())
        fail("must be a list");
    std::vector<_KXMapValue> values;
    values.reserve(_json->size());
    for (const Json& element : *_json)
        values.emplace_back(element, _way + "[" + std::to_string(values.size()) + "]");
    return values;
}

std::vector<_KXMapValue> _KXMapValue::elements(const char* key) const {
    return has(key) ? member(key).elements() : std::vector<_KXMapValue>();
}

// Whole numbers may be written with a fraction of zeros.
std::int64_t _KXMapValue::whole(std::int64_t least, std::int64_t most) const {
    const double value = number();
    if (value != std::floor(value))
        fail("must be a whole number");
    if (value < static_cast<double>(least) || value > static_cast<double>(most))
        fail("must be from " + std::to_string(least) + " to " + std::to_string(most));
    return static_cast<std::int64_t>(value);
}

double _KXMapValue::number() const {
    if (!_json->is_number())
        fail("must be a number");
    const double value = _json->get<double>();
    if (!(std::fabs(value) <= 1e15))
        fail("is too large a number");
    return value;
}

const std::string& _KXMapValue::text() const {
    if (!_json->is_string())
        fail("must be a text");
    return _json->get_ref<const std::string&>();
}

bool _KXMapValue::flag() const {
    if (!_json->is_boolean())
        fail("must be true or false");
    return _json->get<bool>();
}

int _KXMapValue::integer(const char* key, int without, int least, int most) const {
    return has(key) ? static_cast<int>(member(key).whole(least, most)) : without;
}

float _KXMapValue::number(const char* key, float without) const {
    return has(key) ? static_cast<float>(member(key).number()) : without;
}

std::string _KXMapValue::text(const char* key, const char* without) const {
    return has(key) ? member(key).text() : without;
}

bool _KXMapValue::flag(const char* key, bool without) const {
    return has(key) ? member(key).flag() : without;
}

KXColor _KXMapValue::color(const char* key, KXColor without) const {
    return has(key) && !member(key).text().empty() ? member(key).color() : without;
}

KXColor _KXMapValue::color() const {
    const std::string digits = text().substr(text().starts_with('#') ? 1 : 0);
    if ((digits.size() != 6 && digits.size() != 8) ||
        digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        fail("must be a colour, #RRGGBB or #AARRGGBB");
    const auto value = static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
    const auto channel = [value](int shift) { return static_cast<int>(value >> shift & 255U); };
    return KXMakeColori(channel(16), channel(8), channel(0), digits.size() == 8 ? channel(24) : 255);
}

_KXMapValue _KXMapValue::named() const {
    const std::string name = has("name") && member("name").json().is_string() ? text("name") : "";
    return {*_json, name.empty() ? _way : _way + " (" + name + ")"};
}

static Json parse(const std::string& path) {
    if (path.ends_with(".tsx") || path.ends_with(".tmx") || path.ends_with(".tx"))
        throw _KXMapFault{path + ": is XML; save it as JSON in the editor"};
    std::string content;
    if (!_KXReadWholeFile(path.c_str(), std::size_t{1} << 30, content))
        throw _KXMapFault{KXError()};
    const std::size_t start = content.starts_with("\xEF\xBB\xBF") ? 3 : 0; // a byte order mark
    try {
        return Json::parse(content.begin() + static_cast<std::ptrdiff_t>(start), content.end());
    } catch (const Json::exception& error) {
        std::string what = error.what();
        what.erase(0, std::min(what.size(), what.find("] ") + 2)); // the other library's number
        throw _KXMapFault{path + ": is no valid JSON: " + what};
    }
}

// What no editor nests so deeply is left to the other library.
static void makeEmpty(Json& json, int deepest = 200) {
    if (deepest == 0 || !json.is_structured())
        return;
    for (Json& element : json)
        makeEmpty(element, deepest - 1);
    json.clear();
}

_KXMapDocument::_KXMapDocument(const std::string& path) : json(parse(path)) {}

_KXMapDocument::~_KXMapDocument() { makeEmpty(json); }
