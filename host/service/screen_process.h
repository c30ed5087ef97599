// SPDX-License-Identifier: Apache-2.0
// A screen in a process of its own, without this one's files and rights. It ends with this object at the
// latest.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/screen/identity.h"

namespace host {

struct ScreenCommand
{
    std::string program;
    std::vector<std::string> arguments; // behind "--channel DESCRIPTOR"
    std::optional<Identity> identity;   // else whoever this process runs as
};

class ScreenProcess
{
public:
    // `channel` is the one descriptor that it gets besides the standard streams. Throws std::system_error.
    ScreenProcess(const ScreenCommand &command, int channel);
    ~ScreenProcess();
    ScreenProcess(const ScreenProcess &) = delete;
    ScreenProcess &operator=(const ScreenProcess &) = delete;

    // Readable as soon as it has ended.
    int Descriptor() const { return m_descriptor; }
    void Kill() const;
    // Waits for its end; how it ended, for the log.
    std::string Reap();

private:
    pid_t m_process;
    int m_descriptor = -1;
};

} // namespace host
