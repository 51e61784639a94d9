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

/// Why a map cannot be loaded. It never leaves this room.
struct _KXMapFault {
    std::string text;
};

/// What a value in a file is.
enum class _KXMapKind { Nothing, Flag, Number, Text, List, Object };

/// A place in a JSON file that knows its way, to say what is wrong with it. Each operation throws a
/// _KXMapFault if the value is not of the kind that is asked for.
class _KXMapValue {
public:
    _KXMapValue(const nlohmann::json& json, std::string way) : _json(&json), _way(std::move(way)) {}

    [[noreturn]] void fail(const std::string& what) const;
    _KXMapKind kind() const;

    /// Whether there is such a member, and it is not null.
    bool has(const char* key) const;
    _KXMapValue member(const char* key) const;
    std::vector<_KXMapValue> elements() const;
    /// The same for a member; none if it is missing.
    std::vector<_KXMapValue> elements(const char* key) const;
    /// Those of an object, with their names.
    std::vector<std::pair<std::string, _KXMapValue>> members() const;
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
    _KXMapValue named() const;

private:
    const nlohmann::json* _json;
    std::string _way;
};

/// What a file holds; it must outlive what is made of it.
class _KXMapDocument {
public:
    explicit _KXMapDocument(std::string path);
    ~_KXMapDocument();
    _KXMapDocument(const _KXMapDocument&) = delete;
    _KXMapDocument& operator=(const _KXMapDocument&) = delete;

    _KXMapValue root() const { return {*_json, _path + ": "}; }

private:
    std::string _path;
    std::unique_ptr<nlohmann::json> _json;
};
