// SPDX-License-Identifier: Apache-2.0
#include <cerrno>

#include <poll.h>

#include "pbe/application.h"

bool PbeAwait(int descriptor)
{
    // One below zero would be waited for without end.
    if (descriptor < 0)
        return false;
    pollfd waiting{descriptor, POLLIN, 0};
    int ready = 0;
    do
        ready = poll(&waiting, 1, -1);
    while (ready < 0 && errno == EINTR);
    return ready == 1 && (waiting.revents & (POLLIN | POLLHUP)) != 0;
}

void PbeShowWaitSign(bool) {}
