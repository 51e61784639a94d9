#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdint.h>

/// @file
/// The logic loop, the seconds it counts and the frame counter.
///
/// A game calls, in this order: KXInit(), a KXWindow, KXResetLogicLoop(); then per frame KXPreLogicLoop(),
/// `while (KXLogicLoop()) { one logic step; KXLogicUpdate(); }`, drawing, KXWindow::swapBuffers(),
/// KXFPSTick() and KXPostLogicLoop(); at the end KXDeInit().

/// Logic steps per second.
KX_API unsigned KXLogicInterval();
/// Sets the logic steps per second, 1 to 1000 (0 becomes 1, more becomes 1000). A step then takes
/// 1000 / speed milliseconds, an integer: 16 ms at 60. Takes effect at the next KXPreLogicLoop().
KX_API void KXSetLogicInterval(unsigned speed);

/// Starts the loop afresh: nothing is owed but one step, which the first frame runs.
KX_API void KXResetLogicLoop();
/// Begins a frame: works out how many logic steps are due, and lets other programs have the processor for a
/// moment if none is. There is no upper limit; after a long stall the logic catches up with every step owed.
KX_API void KXPreLogicLoop();
/// -1 if a logic step is due, after reading every waiting event into the input state; 0 if none is due, and
/// then no event is read.
KX_API int KXLogicLoop();
/// Ends one logic step and frees the temporary strings, unless KXDisableTemporaryStringCleanup() holds. After
/// the frame's last step the time owed that is shorter than a step is dropped.
KX_API void KXLogicUpdate();
/// Ends the frame: what an open draw batch holds is drawn, a wheel notch is forgotten, and the time until
/// KXPreLogicLoop() has been counted.
KX_API void KXPostLogicLoop();

/// Whole seconds counted by the logic loop, at most one per step.
KX_API int64_t KXElapsedTime();
/// Sets the count of KXElapsedTime() to 0.
KX_API void KXResetElapsedTime();

/// Frames counted in the last measuring period of just over a second; 0 before the first has ended.
KX_API int KXFPS();
/// Counts one frame.
KX_API void KXFPSTick();
