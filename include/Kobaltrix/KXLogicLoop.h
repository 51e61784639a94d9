#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <stdint.h>

/// @file
/// The logic loop, the seconds it counts and the frame counter.
///
/// A game calls, in this order: KXInit(), a KXWindow, KXResetLogicLoop(); then per frame KXPreLogicLoop(),
/// `while (KXLogicLoop()) { one logic step; KXLogicUpdate(); }`, drawing, KXWindow::swapBuffers(),
/// KXFPSTick() and KXPostLogicLoop(); at the end KXDeInit().
///
/// By itself the loop takes whole milliseconds for a step and drops what is left of a frame's time when its
/// steps are done, so how fast a game runs depends on the display: at 60 steps a second there are 59 on a
/// display of 60 Hz, 38 on one of 75 Hz. With KXSetLogicExact() nothing is dropped, and the steps come at
/// their rate on every display. KXWaitForLogicStep() ends each frame of a game that shall not keep a
/// processor busy.

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

/// With a non-zero @a exact the loop keeps what is left of a frame's time for the next one, and a step takes
/// exactly its part of a second: over any time the steps of that time are run, whatever the display's rate.
/// With 0, as at the start, it drops the rest. To be chosen before KXResetLogicLoop(), which begins with one
/// step and half of the next: a display as fast as the logic then meets each step in its middle, and no
/// trembling of its rate makes frames of no step and of two.
KX_API void KXSetLogicExact(int exact);
/// Limits the steps of one frame: of what is owed beyond them whole steps are dropped, and counted by
/// KXDroppedLogicSteps(). After a stall the game then goes on where it was instead of catching up with all of
/// it. 0, as at the start, is no limit.
KX_API void KXSetMaximumLogicSteps(unsigned steps);
/// The steps that the limit of KXSetMaximumLogicSteps() has dropped since KXResetLogicLoop().
KX_API uint64_t KXDroppedLogicSteps();
/// How much of the next step's time has passed at this frame's KXPreLogicLoop(), when its steps are done:
/// from 0 to just below 1. For drawing between two steps: what moved from a to b in the last step is drawn at
/// a + (b - a) * fraction. Without KXSetLogicExact() it is 0 after a step.
KX_API float KXLogicFraction();
/// Sleeps until the next logic step is due, or until an event comes: an event ends the wait once, and those
/// that wait already when it is called do not. To be called at the end of a frame, after KXPostLogicLoop().
/// @return -1 if a step is due, 0 if an event has come.
KX_API int KXWaitForLogicStep();
/// Seconds since some fixed moment, as fine as the system's clock, which never goes back.
KX_API double KXTime();

/// Whole seconds counted by the logic loop, at most one per step.
KX_API int64_t KXElapsedTime();
/// Sets the count of KXElapsedTime() to 0.
KX_API void KXResetElapsedTime();

/// Frames counted in the last measuring period of just over a second; 0 before the first has ended.
KX_API int KXFPS();
/// Counts one frame.
KX_API void KXFPSTick();
