// SPDX-License-Identifier: Apache-2.0
// The toolkit wants a directory that is its user's alone, named by XDG_RUNTIME_DIR, and complains where there
// is none; a screen that becomes another user than root has none.
#pragma once

#include <string>

namespace host {

class RuntimeDirectory
{
public:
    // For this user ("UID:GID..."), and for the processes that are started from now on; nothing where nobody
    // changes.
    explicit RuntimeDirectory(const std::string &user);
    ~RuntimeDirectory();
    RuntimeDirectory(const RuntimeDirectory &) = delete;
    RuntimeDirectory &operator=(const RuntimeDirectory &) = delete;

private:
    std::string m_path;
};

} // namespace host
