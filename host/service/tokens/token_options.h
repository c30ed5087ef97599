// SPDX-License-Identifier: Apache-2.0
// How the processes of PKCS#11 modules are started and how long they are waited for.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace host {

struct TokenOptions
{
    std::string program;              // pba_token; empty: there are no tokens
    std::vector<std::string> modules; // as p11-kit takes them
    std::string user;                 // "UID:GID,GID...", or empty: whoever this process runs as
    // For an answer: at a reader's PIN pad a person has to type meanwhile.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);

    // Nobody types while tokens are listed, and after a login nobody waits for its end.
    std::chrono::milliseconds ListTimeout() const;
    std::chrono::milliseconds EndTimeout() const;
};

} // namespace host
