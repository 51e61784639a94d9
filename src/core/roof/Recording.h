#pragma once

/// Begins what the environment asks for, once in a process. False, with a text in the error slot, if that
/// cannot be done.
bool _KXBeginRecordingByEnvironment();
/// To be called when a step begins. Where a replay has ended what it held is let go of, and its pads are
/// gone.
void _KXLeaveReplay();
/// To be called when a step has read its events.
void _KXRecordStep();
