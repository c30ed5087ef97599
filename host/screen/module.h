// SPDX-License-Identifier: Apache-2.0
// The view module, loaded at run time.
#pragma once

#include <string>

#include "pba/view.h"

namespace host {

class Module
{
public:
    // The module beside this program, else the installed one.
    static std::string DefaultPath();

    // False, with what is wrong in `*fault`, when `path` is no view module. It stays loaded until the program
    // ends: its toolkit does not survive being unloaded.
    bool Load(const std::string &path, std::string *fault);

    decltype(&CreateMainView) createMainView = nullptr;
    decltype(&DeleteMainView) deleteMainView = nullptr;
    decltype(&CreateTranslator) createTranslator = nullptr;
    decltype(&DeleteTranslator) deleteTranslator = nullptr;
};

} // namespace host
