// SIGINT, SIGTERM and SIGHUP end the view, which gives the display back; a second one ends the program at
// once.
#pragma once

namespace host {

inline constexpr int kExitSignal = 3;

void InstallStopSignals();
bool StopRequested();

} // namespace host
