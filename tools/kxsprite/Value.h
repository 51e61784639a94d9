#pragma once

#include "Document.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>

/// JSON whose objects keep their order, which is the order of frames, and whose fractions are as wide as
/// those of a sprite file, so that they are printed no longer than they are.
using JsonTree = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool, std::int64_t,
                                      std::uint64_t, float>;

/// A place in a JSON tree that knows its path, so that what is wrong with it can be said. Every operation
/// throws a Fault if the value is of another kind.
class Value {
public:
    explicit Value(const JsonTree& json, std::string path = {}) : _json(&json), _path(std::move(path)) {}

    Value member(const char* key) const;
    /// The member, or nothing where it is absent or null.
    std::optional<Value> find(const char* key) const;
    /// The elements of an array, or the members of an object, in the order of the file. The name is the key.
    std::vector<std::pair<std::string, Value>> children() const;
    std::vector<Value> elements() const;

    bool isArray() const;

    std::int32_t integer() const;
    float number() const;
    const std::string& text() const;
    bool flag() const;
    /// A name: a text without a zero byte, which would end it inside the library.
    const std::string& name() const;

    /// Refuses members of other names: they would be mistakes in writing that nobody notices.
    void allowOnly(std::initializer_list<std::string_view> keys) const;

    [[noreturn]] void fail(const std::string& what) const;

private:
    std::string path(const std::string& key) const { return _path.empty() ? key : _path + "." + key; }

    const JsonTree* _json;
    std::string _path;
};

/// A text that was parsed; it must outlive what is made of it.
class ParsedJson {
public:
    /// Throws a Fault where it is not JSON, and where an object has a key twice: the second value would
    /// silently take the place of the first.
    explicit ParsedJson(const std::string& text);
    ~ParsedJson();
    ParsedJson(const ParsedJson&) = delete;
    ParsedJson& operator=(const ParsedJson&) = delete;

    Value root() const { return Value(*_tree); }

private:
    std::unique_ptr<const JsonTree> _tree;
};
