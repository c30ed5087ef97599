// SPDX-License-Identifier: Apache-2.0
#include "admin/passwords.h"

#include <algorithm>
#include <unistd.h>

#include "admin/failure.h"
#include "admin/line_input.h"
#include "base/text.h"

namespace admin {
namespace {

// The fields of the view take no more.
constexpr std::size_t kMaxNewPasswordUnits = 127;
constexpr std::size_t kMinPassphraseUnits = 12;

bool IsControlCharacter(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

void CheckNewPassword(const base::Secret &password)
{
    const std::string_view text = password.View();
    const std::optional<std::size_t> units = base::Utf16Length(text);
    if (text.empty())
        throw Failure("the new password is empty");
    if (!units || std::any_of(text.begin(), text.end(), IsControlCharacter))
        throw Failure("the new password has characters that cannot be typed; it must be UTF-8 text");
    if (*units > kMaxNewPasswordUnits)
        throw Failure("the new password is longer than 127 characters, the most that the login page takes");
}

} // namespace

base::Secret PasswordSource::Read(const char *prompt) const
{
    base::Secret password;
    LineStatus status = LineStatus::Interrupted;
    while (status == LineStatus::Interrupted)
        status =
            m_fromStandardInput ? ReadSecretLine(STDIN_FILENO, &password) : AskSecretLine(prompt, &password);
    if (status == LineStatus::TooLong)
        throw Failure("the password is longer than 512 bytes");
    if (status == LineStatus::Ended)
        throw Failure("the input ended where a password was expected");
    return password;
}

base::Secret PasswordSource::Existing() const
{
    return Read("Existing password of the volume: ");
}

base::Secret PasswordSource::Pin() const
{
    return Read("PIN of the token: ");
}

base::Secret PasswordSource::New() const
{
    base::Secret password = Read("New password: ");
    CheckNewPassword(password);
    if (!m_fromStandardInput && Read("New password again: ").View() != password.View())
        throw Failure("the two passwords differ; nothing was changed");
    return password;
}

base::Secret PasswordSource::Passphrase() const
{
    return Read("Passphrase of the administrator's key: ");
}

base::Secret PasswordSource::NewPassphrase() const
{
    base::Secret passphrase = Read("New passphrase: ");
    if (base::Utf16Length(passphrase.View()).value_or(0) < kMinPassphraseUnits)
        throw Failure("the passphrase must be UTF-8 text of at least 12 characters; it guards every computer "
                      "that is enrolled with the key");
    if (!m_fromStandardInput && Read("New passphrase again: ").View() != passphrase.View())
        throw Failure("the two passphrases differ; nothing was changed");
    return passphrase;
}

} // namespace admin
