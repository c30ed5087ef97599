// SPDX-License-Identifier: Apache-2.0
// Ends the event loops when a stop was requested, be it from a signal handler or before there was an
// application.
#pragma once

#include <QSocketNotifier>

namespace pbe {

class StopWatch
{
public:
    StopWatch();

private:
    QSocketNotifier m_notifier;
};

} // namespace pbe
