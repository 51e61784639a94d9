#pragma once

// How the kid moves. Lengths are pixels of the map, of which a tile has 16; speeds are pixels in a step, and
// a second has 60 steps.
namespace Feel {
inline constexpr float runSpeed = 1.9f;     ///< At most.
inline constexpr float runStart = 0.14f;    ///< By which it becomes faster in a step on the ground.
inline constexpr float runStop = 0.24f;     ///< By which it becomes slower when nothing is held.
inline constexpr float airStart = 0.11f;    ///< As runStart, in the air.
inline constexpr float airStop = 0.05f;     ///< As runStop, in the air.
inline constexpr float gravity = 0.22f;     ///< By which it falls faster in a step.
inline constexpr float fallSpeed = 4.6f;    ///< At most.
inline constexpr float jumpSpeed = 4.75f;   ///< A little over three tiles high.
inline constexpr float jumpCut = 0.45f;     ///< What remains of its speed when jump is let go on the way up.
inline constexpr float bounceSpeed = 4.0f;  ///< Off a beetle's back.
inline constexpr int lateJumpSteps = 6;     ///< So long after an edge it may still jump.
inline constexpr int earlyJumpSteps = 7;    ///< So long before the ground a jump is remembered.
inline constexpr int tumbleSteps = 50;      ///< So long it lies before it is back at the last bell.
inline constexpr float beetleSpeed = 0.45f; ///< Of a beetle on its walk.
inline constexpr float crowSpeed = 1.0f;    ///< Of a crow on its way.
inline constexpr float basketSpeed = 0.8f;  ///< Of a basket on its rope.
inline constexpr float reach = 4;           ///< How far a stomp may go into a beetle.
} // namespace Feel
