// SPDX-License-Identifier: Apache-2.0
// A screen in a process of its own, without this one's files. It ends with this object at the latest.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/service/handed_files.h"

namespace host {

struct ScreenCommand
{
    std::string program;
    std::vector<std::string> arguments;       // behind "--channel DESCRIPTOR"
    std::vector<int> descriptors;             // that the arguments name
    bool asksAtTerminal;                      // at standard input's; else it has none
    std::function<HandedFiles()> openFiles{}; // that it gets besides, opened anew for each screen
};

struct ScreenEnd
{
    std::optional<int> code; // nothing: by a signal
    std::string description; // for the log
};

class ScreenProcess
{
public:
    // It gets `channel`, and the standard streams. Throws std::system_error.
    ScreenProcess(const ScreenCommand &command, int channel);
    ~ScreenProcess();
    ScreenProcess(const ScreenProcess &) = delete;
    ScreenProcess &operator=(const ScreenProcess &) = delete;

    // Readable as soon as it has ended.
    int Descriptor() const { return m_descriptor; }
    void Kill() const;
    // Waits for its end.
    ScreenEnd Reap();

private:
    pid_t m_process;
    int m_descriptor = -1;
};

} // namespace host
