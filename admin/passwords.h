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
    volume::Secret Existing() const;
    // One that a person will have to type at the login page; asked twice at the terminal. Throws Failure.
    volume::Secret New() const;
    // Of a token: any bytes.
    volume::Secret Pin() const;

    // Of the administrator's key.
    volume::Secret Passphrase() const;
    volume::Secret NewPassphrase() const;

private:
    volume::Secret Read(const char *prompt) const;

    bool m_fromStandardInput;
};

} // namespace admin
