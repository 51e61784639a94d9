#include "Value.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <set>

static JsonTree parse(const std::string& text) {
    std::vector<std::set<std::string>> keys;
    const auto refuseTwins = [&](int, JsonTree::parse_event_t event, JsonTree& parsed) {
        if (event == JsonTree::parse_event_t::object_start)
            keys.emplace_back();
        else if (event == JsonTree::parse_event_t::object_end)
            keys.pop_back();
        else if (event == JsonTree::parse_event_t::key &&
                 !keys.back().insert(parsed.get_ref<const std::string&>()).second)
            throw Fault("the key " + quoted(parsed.get_ref<const std::string&>()) +
                        " occurs twice in one object; for frames of an Aseprite export, export as an array "
                        "(--format json-array) or put {frame} into --filename-format");
        return true;
    };
    try {
        return JsonTree::parse(text, refuseTwins);
    } catch (const JsonTree::exception& error) {
        std::string what = error.what();
        what.erase(0, std::min(what.size(), what.find("] ") + 2)); // the library's own error number
        throw Fault("is no valid JSON: " + what);
    }
}

ParsedJson::ParsedJson(const std::string& text) : _tree(std::make_unique<const JsonTree>(parse(text))) {}
ParsedJson::~ParsedJson() = default;

void Value::fail(const std::string& what) const {
    throw Fault(_path.empty() ? what : quoted(_path) + " " + what);
}

std::optional<Value> Value::find(const char* key) const {
    if (!_json->is_object())
        fail("must be an object");
    const auto found = _json->find(key);
    if (found == _json->end() || found->is_null())
        return std::nullopt;
    return Value(*found, path(key));
}

Value Value::member(const char* key) const {
    const std::optional<Value> found = find(key);
    if (!found)
        Value(*_json, path(key)).fail("is missing");
    return *found;
}

std::vector<std::pair<std::string, Value>> Value::children() const {
    std::vector<std::pair<std::string, Value>> children;
    if (_json->is_object()) {
        for (const auto& [key, value] : _json->items())
            children.emplace_back(key, Value(value, path(key)));
    } else {
        std::size_t index = 0;
        for (const Value& value : elements())
            children.emplace_back(std::to_string(index++), value);
    }
    return children;
}

std::vector<Value> Value::elements() const {
    if (!_json->is_array())
        fail("must be an array");
    std::vector<Value> values;
    for (const JsonTree& element : *_json)
        values.emplace_back(element, _path + "[" + std::to_string(values.size()) + "]");
    return values;
}

bool Value::isArray() const { return _json->is_array(); }

std::int32_t Value::integer() const {
    using Limits = std::numeric_limits<std::int32_t>;
    if (_json->is_number_unsigned() && _json->get<std::uint64_t>() > std::uint64_t{Limits::max()})
        fail("is too large a number");
    if (!_json->is_number_integer())
        fail("must be a whole number");
    const auto number = _json->get<std::int64_t>();
    if (number < Limits::min() || number > Limits::max())
        fail("is too large a number");
    return static_cast<std::int32_t>(number);
}

float Value::number() const {
    if (!_json->is_number())
        fail("must be a number");
    return _json->get<float>();
}

const std::string& Value::text() const {
    if (!_json->is_string())
        fail("must be a text");
    return _json->get_ref<const std::string&>();
}

bool Value::flag() const {
    if (!_json->is_boolean())
        fail("must be true or false");
    return _json->get<bool>();
}

const std::string& Value::name() const {
    if (text().find('\0') != std::string::npos)
        fail("holds a zero byte, which no name can");
    return text();
}

void Value::allowOnly(std::initializer_list<std::string_view> keys) const {
    if (!_json->is_object())
        fail("must be an object");
    for (const auto& [key, value] : _json->items())
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
            fail(_path.empty() ? "the key " + quoted(key) + " is not known"
                               : "has the key " + quoted(key) + ", which is not known");
}
