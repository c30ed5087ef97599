// SPDX-License-Identifier: Apache-2.0
#include "host/service/runtime_directory.h"

#include <cstdlib>

#include <unistd.h>

#include "host/log.h"
#include "host/screen/identity.h"

namespace host {
namespace {

constexpr char kVariable[] = "XDG_RUNTIME_DIR";

} // namespace

RuntimeDirectory::RuntimeDirectory(const std::string &user)
{
    const std::optional<Identity> identity = FindIdentity(user);
    if (!identity)
        return;
    std::string path = "/run/pba_host-XXXXXX";
    if (!mkdtemp(path.data()) || chown(path.c_str(), identity->user, identity->group) != 0) {
        Log(kLogErrors, "There is no directory in /run for the screen; it complains, and goes on.");
        return;
    }
    m_path = path;
    setenv(kVariable, path.c_str(), 1);
}

// The screens write nothing into it.
RuntimeDirectory::~RuntimeDirectory()
{
    if (!m_path.empty())
        rmdir(m_path.c_str());
}

} // namespace host
