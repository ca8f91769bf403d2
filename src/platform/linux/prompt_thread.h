#pragma once

/// Has the calling thread woken from its sleeps promptly while other programs keep the processor
/// busy. Every user may ask for it; systems that do not know it (before Linux 6.12) take no notice.
/// Whether it is granted.
bool wakePromptly();

/// The same with real-time priority, where the user's limits grant it.
void wakeInRealTime();
