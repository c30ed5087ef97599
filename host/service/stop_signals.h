// SPDX-License-Identifier: Apache-2.0
// SIGINT, SIGTERM and SIGHUP, which ask the program to end.
#pragma once

namespace host {

// From now on they are read from this descriptor, a signalfd, which closes at an exec; -1, with errno, when
// there is none. To be called before there are further threads.
int TakeStopSignals();

} // namespace host
