// SPDX-License-Identifier: Apache-2.0
// Where a command takes its passwords from: the terminal, or lines of standard input.
#pragma once

#include "base/secret.h"

namespace admin {

class PasswordSource
{
public:
    explicit PasswordSource(bool fromStandardInput)
        : m_fromStandardInput(fromStandardInput)
    {
    }

    // One that the volume knows: any bytes. Throws Failure.
    base::Secret Existing() const;
    // One that a person will have to type at the login page; asked twice at the terminal. Throws Failure.
    base::Secret New() const;
    // Of a token: any bytes.
    base::Secret Pin() const;

    // Of the administrator's key.
    base::Secret Passphrase() const;
    base::Secret NewPassphrase() const;

private:
    base::Secret Read(const char *prompt) const;

    bool m_fromStandardInput;
};

} // namespace admin
