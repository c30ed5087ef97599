// SPDX-License-Identifier: Apache-2.0
// The two encodings that meet at a volume: the view speaks UTF-16, headers and passphrases are UTF-8.
// Nothing is normalised: a passphrase is the bytes as typed, as the standard tools take it.
#pragma once

#include <string>
#include <string_view>

#include "base/secret.h"
#include "base/utf.h" // with it, for those who read texts convert them, too

namespace base {

// An unpaired surrogate becomes U+FFFD.
Secret ToSecretUtf8(std::u16string_view text);

// Valid UTF-8 of characters that show: neither control nor format characters, nor such as are drawn as
// nothing, and no other blank than the ordinary one. Of two texts that are not plain a person may see but
// one.
bool IsPlain(std::string_view text);
// For a line at a terminal or in a log: what is not plain is escaped, as "\u{202e}", and a byte that is not
// UTF-8 as "\xff". A backslash that would look like the beginning of that is escaped, too.
std::string Printable(std::string_view text);

} // namespace base
