// SPDX-License-Identifier: Apache-2.0
// What pba_host tells the screen that it starts. Nobody else starts one, so what is wrong needs no words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

struct ScreenOptions
{
    int channel = -1;
    std::string root;
    std::string user = {}; // "UID:GID,GID..." to become; empty to stay who it is
    std::string module = {};
    int log = -1;
    std::optional<std::uint32_t> logSeverity = {};
    bool landlockRequired = false;
    // Of the view's files, by their names below ROOT/pba.
    std::vector<std::pair<std::string, int>> files = {};

    // All that are to stay open.
    std::vector<int> Descriptors() const;
};

std::optional<ScreenOptions> ParseScreenOptions(int argc, char **argv);

} // namespace host
