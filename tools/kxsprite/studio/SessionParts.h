#pragma once

#include "Session.h"

#include <algorithm>
#include <cmath>

// What the changes of a session have in common.

inline constexpr float farthest = 1 << 20; // well beyond any sheet, and exact with every fraction that counts
inline constexpr std::int32_t largestExtent = 1 << 15;
inline constexpr int longestDuration = 1000000;

inline float place(float value) { return std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0; }

inline Area sane(Area area) {
    return {place(area.x), place(area.y), std::clamp(area.width, 1, largestExtent),
            std::clamp(area.height, 1, largestExtent)};
}

inline Grid sane(Grid grid) {
    const auto from = [](int value, int least) { return std::clamp(value, least, 1 << 15); };
    return {from(grid.x, 0),      from(grid.y, 0),    from(grid.width, 1),
            from(grid.height, 1), from(grid.gapX, 0), from(grid.gapY, 0)};
}

/// Files may hold places that are no numbers, by which nothing can be drawn or brought into an order.
inline void settlePlaces(Project& project) {
    const auto settle = [](Area& area) {
        const Area before = area;
        area.x = place(area.x), area.y = place(area.y);
        return !(area == before);
    };
    for (NamedBox& box : project.boxes)
        settle(box.area);
    for (std::shared_ptr<const NamedAnimation>& animation : project.animations) {
        auto settled = std::make_shared<NamedAnimation>(*animation);
        bool differs = false;
        for (Frame& frame : settled->animation.frames)
            differs |= settle(frame.bounds);
        if (differs)
            animation = std::move(settled);
    }
}

/// The name, or one with a number behind it that is not taken.
template<typename IsTaken>
std::string freeName(const std::string& wished, IsTaken isTaken) {
    if (!wished.empty() && !isTaken(wished))
        return wished;
    std::string stem = wished.substr(0, wished.find_last_not_of("0123456789") + 1);
    if (!stem.empty() && stem.back() != ' ' && stem.size() == wished.size())
        stem += ' ';
    for (int i = 2;; ++i)
        if (std::string name = stem + std::to_string(i); !isTaken(name))
            return name;
}

/// Moves one element by so many places, as far as there are any; its place afterwards.
template<typename List>
int moveBy(List& list, int from, int by) {
    const int to = static_cast<int>(
        std::clamp<std::int64_t>(std::int64_t{from} + by, 0, static_cast<std::int64_t>(list.size()) - 1));
    const auto first = list.begin() + std::min(from, to), last = list.begin() + std::max(from, to) + 1;
    std::rotate(first, from < to ? first + 1 : last - 1, last);
    return to;
}

inline std::set<int> numbers(int from, std::size_t count) {
    std::set<int> all;
    for (std::size_t i = 0; i < count; ++i)
        all.insert(all.end(), from + static_cast<int>(i));
    return all;
}

inline int countOf(const auto& list) { return static_cast<int>(list.size()); }
