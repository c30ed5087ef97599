// SPDX-License-Identifier: Apache-2.0
// The two encodings that meet at a volume: the view speaks UTF-16, headers and passphrases are UTF-8.
// Nothing is normalised: a passphrase is the bytes as typed, as the standard tools take it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/secret.h"

namespace base {

// An unpaired surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
Secret ToSecretUtf8(std::u16string_view text);

// The number of UTF-16 code units that `text` takes; nothing when it is not valid UTF-8.
std::optional<std::size_t> Utf16Length(std::string_view text);
// Ends at the first byte that is not valid UTF-8: check with Utf16Length before.
std::u16string ToUtf16(std::string_view text);

// Valid UTF-8 of characters that show: neither control nor format characters, nor such as are drawn as
// nothing, and no other blank than the ordinary one. Of two texts that are not plain a person may see but
// one.
bool IsPlain(std::string_view text);
// For a line at a terminal or in a log: what is not plain is escaped, as "\u{202e}", and a byte that is not
// UTF-8 as "\xff". A backslash that would look like the beginning of that is escaped, too.
std::string Printable(std::string_view text);

} // namespace base
