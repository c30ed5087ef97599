// SPDX-License-Identifier: Apache-2.0
// SIGINT, SIGTERM and SIGHUP end the view, which gives the display back; a second one ends the program at
// once.
#pragma once

namespace host {

inline constexpr int kExitSignal = 3;

void InstallStopSignals();
bool StopRequested();
// For who polls: from now on they are read from this descriptor, a signalfd; -1, with errno, when there is
// none. To be called before there are further threads.
int StopSignalDescriptor();

} // namespace host
