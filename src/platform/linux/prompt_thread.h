#pragma once

/// Has the calling thread woken from its sleeps promptly while other programs keep the processor
/// busy. Every user may ask for it; systems that do not know it take no notice.
void wakePromptly();

/// The same with real-time priority, where the user's limits grant it.
void wakeInRealTime();
