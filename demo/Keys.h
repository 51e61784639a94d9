#pragma once

// The numbers that the library has for the keys of this game.
namespace Key {
inline constexpr int a = 1, d = 4, f = 6, h = 8, o = 15, p = 16, s = 19, w = 23;
inline constexpr int enter = 53, tab = 54, escape = 69;
inline constexpr int up = 99, right = 100, left = 101, down = 102;
inline constexpr int f1 = 107, f2 = 108, f3 = 109;
inline constexpr int leftShift = 122, rightShift = 123, leftAlt = 124, rightAlt = 125, space = 133,
                     leftControl = 135;
} // namespace Key
