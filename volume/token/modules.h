// SPDX-License-Identifier: Apache-2.0
// The PKCS#11 modules, and through them the tokens that are connected.
#pragma once

#include <string>
#include <vector>

#include "volume/token/token.h"

namespace token {

class Modules
{
public:
    // All that the system's configuration names, or the one at `path`. They are loaded with the first
    // question and again when they did not answer, so that a service that starts late is found.
    explicit Modules(std::string path = {});
    ~Modules();
    Modules(const Modules &) = delete;
    Modules &operator=(const Modules &) = delete;

    // The tokens with a PIN that are there now, in the order of their slots. What does not answer has none.
    std::vector<Token> Connected();
    // Whether any module was to be had when tokens were last asked for.
    bool AreLoaded() const { return !m_modules.empty(); }

private:
    void Load();
    void Unload();
    bool Collect(CK_FUNCTION_LIST *module, std::vector<Token> *tokens) const;

    std::string m_path;
    std::vector<CK_FUNCTION_LIST *> m_modules;
    bool m_allAnswer = false;
};

} // namespace token
