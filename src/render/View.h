#pragma once

#include <Kobaltrix/KXTypes.h>

/// Which points are in view, by OpenGL's matrices. A driver that draws in software cuts what reaches out of
/// the view, and then takes a slow way for all that shares the call: half as fast, for the sake of one sprite
/// at the edge. Who knows what is in view can keep the two apart.
class _KXView {
public:
    _KXView() = default;
    /// What is in view now. Where the plane is turned or seen in perspective, everything is taken to be.
    static _KXView now();

    /// Where a point lies, on the square from -1 to 1 that is in view.
    KXPoint operator()(KXPoint point) const { return {_xScale * point.x + _x, _yScale * point.y + _y}; }
    /// Whether it is known what is in view.
    bool isKnown() const { return _xScale != 0 && _yScale != 0; }
    bool contains(KXPoint point) const {
        const auto [x, y] = (*this)(point);
        return x >= -1 && x <= 1 && y >= -1 && y <= 1;
    }
    /// Whether each of some corners is in view.
    template<class Corner>
    bool contains(const Corner* corners, int count) const {
        for (const Corner* corner = corners; corner != corners + count; ++corner)
            if (!contains(corner->position))
                return false;
        return true;
    }

private:
    float _xScale = 0, _x = 0, _yScale = 0, _y = 0; // onto the square from -1 to 1
};

/// How many pixels of the target a unit is, before matrices of the game's own.
inline constinit float _KXPixelsPerUnit = 1;
/// Whether glyphs are made for the target's pixels, where it has more or fewer than units.
inline constinit bool _KXTargetHasSharpText = false;
