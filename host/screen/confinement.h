// SPDX-License-Identifier: Apache-2.0
// Takes from a process what a screen does not need: after it, drawing code that somebody has taken over can
// read fonts, hear keys and paint, and ask the service, but not reach the volume, other processes or the net.
//
// Several walls stand behind each other, because each has gaps: another user, no capabilities, no new rights
// by programs, no descriptors, a list of paths (Landlock), a list of system calls (seccomp), no dumps and no
// tracing by others of the same user.
#pragma once

#include <string>
#include <vector>

namespace host {

struct Confinement
{
    // A name, or numbers where there are no names: "UID:GID" or "UID:GID,GID...". Neither may be root's.
    // Empty: whoever the process runs as already, as long as that is not root.
    std::string user = {};
    // Files, or directories with all below. Those that do not exist, or
    // that the user cannot reach, are left out.
    std::vector<std::string> readable = {};
    std::vector<std::string> writable = {}; // also the devices that are asked for more than their bytes
    // Inherited ones that stay open, besides the three standard streams. Those that are closed by an exec
    // are the program's own and stay as well.
    std::vector<int> descriptors = {};
    // Whether there is a display server to be connected to: the one use of local sockets.
    bool displayServer = false;
    // Whether it asks at the terminal of its standard streams, and neither draws nor hears keys.
    bool terminal = false;
    // Whether a kernel that has no Landlock will do.
    bool landlockRequired = false;
};

// What pba_screen works with: fonts, keyboard layouts, its own libraries in `programs`, devices for input and
// display, and what lies in ROOT/pba to be read.
Confinement ForScreen(const std::string &root, const std::string &programs, bool displayServer);

// What pba_text works with: its texts in ROOT/pba, and what the system's libraries read.
Confinement ForTerminal(const std::string &root);

// What every process has to do without: another user's rights, capabilities, new ones by programs, inherited
// descriptors other than these, dumps and tracing. As Confine, which does more.
[[nodiscard]] bool RenounceRights(const std::string &user, const std::vector<int> &descriptors,
                                  std::string *fault);

// Before the process has more than one thread. For good; `fault` says in one line without a full stop what
// could not be done, and then the process must end, for some of it may have been.
[[nodiscard]] bool Confine(const Confinement &confinement, std::string *fault);

} // namespace host
