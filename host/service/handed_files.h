// SPDX-License-Identifier: Apache-2.0
// The view's files that a screen without rights cannot open for itself, opened for it: it gets these, and
// neither the right to write anything else of its root nor the one to replace them.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/service/descriptor.h"

namespace host {

class HandedFiles
{
public:
    // None.
    HandedFiles() = default;
    // Those of the root that the platform knows. What is missing, no regular file, or for automatic logons
    // while they are not allowed, is not among them.
    explicit HandedFiles(bool autologonAllowed);
    // What was made for a screen to write, and was not, does not stay.
    static void RemoveUnwritten();

    // For the screen's command line: "--file", "NAME=DESCRIPTOR", for each of them.
    std::vector<std::string> Arguments() const;
    std::vector<int> Descriptors() const;

private:
    void Add(const char *name, int descriptor);

    std::vector<std::pair<const char *, Descriptor>> m_files;
};

} // namespace host
