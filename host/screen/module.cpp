// SPDX-License-Identifier: Apache-2.0
#include "host/screen/module.h"

#include <dlfcn.h>
#include <filesystem>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr char kFileName[] = "libpba_view.so";

template <typename Function>
bool Find(void *library, const char *name, Function *function)
{
    *function = reinterpret_cast<Function>(dlsym(library, name));
    return *function != nullptr;
}

} // namespace

std::string Module::DefaultPath()
{
    std::error_code error;
    const fs::path programs = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path beside = programs / kFileName;
    if (fs::exists(beside, error))
        return beside.string();
    return (programs / PBA_MODULE_DIR / kFileName).lexically_normal().string();
}

bool Module::Load(const std::string &path, std::string *fault)
{
    // Opening a fifo would wait for its other end.
    std::error_code error;
    if (!fs::is_regular_file(path, error)) {
        *fault = path + " is no file; give --module the path of " + kFileName;
        return false;
    }
    // Absolute, or a bare name would be looked for in the system's library directories.
    void *library = dlopen(fs::absolute(path, error).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        *fault = dlerror();
        return false;
    }
    if (Find(library, "CreateMainView", &createMainView) &&
        Find(library, "DeleteMainView", &deleteMainView) &&
        Find(library, "CreateTranslator", &createTranslator) &&
        Find(library, "DeleteTranslator", &deleteTranslator))
        return true;
    *fault = path + " lacks the exports of a view module; give --module another file";
    return false;
}

} // namespace host
