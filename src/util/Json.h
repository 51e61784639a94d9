#pragma once

#include <Kobaltrix/KXTypes.h>

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What is wrong with a file. It never leaves the room that reads it.
struct _KXJsonFault {
    std::string text;
};

/// What a value in a file is.
enum class _KXJsonKind { Nothing, Flag, Number, Text, List, Object };

/// A place in a JSON file that knows its way, to say what is wrong with it. Each operation throws a
/// _KXJsonFault if the value is not of the kind that is asked for.
class _KXJsonValue {
public:
    _KXJsonValue(const nlohmann::json& json, std::string way) : _json(&json), _way(std::move(way)) {}

    [[noreturn]] void fail(const std::string& what) const;
    _KXJsonKind kind() const;

    /// Whether there is such a member, and it is not null.
    bool has(const char* key) const;
    _KXJsonValue member(const char* key) const;
    std::vector<_KXJsonValue> elements() const;
    /// The same for a member; none if it is missing.
    std::vector<_KXJsonValue> elements(const char* key) const;
    /// Those of an object, with their names.
    std::vector<std::pair<std::string, _KXJsonValue>> members() const;
    /// The elements, so many cells of tiles.
    std::vector<std::uint32_t> cells(std::size_t wanted) const;

    std::int64_t whole(std::int64_t least, std::int64_t most) const;
    double number() const;
    const std::string& text() const;
    bool flag() const;

    // Of a member, or what it is without one.
    int integer(const char* key, int without, int least = 0,
                int most = std::numeric_limits<int>::max()) const;
    float number(const char* key, float without) const;
    std::string text(const char* key, const char* without = "") const;
    bool flag(const char* key, bool without) const;
    /// "#RRGGBB", "#AARRGGBB", or nothing.
    KXColor color(const char* key, KXColor without) const;
    KXColor color() const;

    /// The same place, with the name it has in the editor.
    _KXJsonValue named() const;

private:
    const nlohmann::json* _json;
    std::string _way;
};

/// What a file holds; it must outlive what is made of it.
class _KXJsonDocument {
public:
    explicit _KXJsonDocument(std::string path);
    ~_KXJsonDocument();
    _KXJsonDocument(const _KXJsonDocument&) = delete;
    _KXJsonDocument& operator=(const _KXJsonDocument&) = delete;

    _KXJsonValue root() const { return {*_json, _path + ": "}; }

private:
    std::string _path;
    std::unique_ptr<nlohmann::json> _json;
};
