// SPDX-License-Identifier: Apache-2.0
// What every narrow view offers: a message shown over the current screen.
#pragma once

#include <cstdint>

#include "kro/result.h"
#include "kro/string.h"

namespace pba {

// Icon and look of a message. Any other value keeps the look of information.
inline constexpr std::uint32_t kSeverityInformation = 0;
inline constexpr std::uint32_t kSeverityWarning = 1;
inline constexpr std::uint32_t kSeverityError = 2;

// What follows a message. An unknown type counts as plain.
inline constexpr std::uint32_t kMessagePlain = 0;
// Offers "Forgot your password?"; only that button asks for password recovery.
inline constexpr std::uint32_t kMessageOffersRecovery = 1;
// Password recovery is the only way on: it starts however the message was closed.
inline constexpr std::uint32_t kMessageStartsRecovery = 2;

class IMessageView
{
public:
    // Shows the message at once and returns when the person has closed it; a nested event loop runs
    // meanwhile. The recovery that types 1 and 2 may lead to is a request like any other (see view.h): ask
    // for nothing more after such a message, or it is replaced.
    virtual kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                                      std::uint32_t severity, std::uint32_t type) = 0;

protected:
    ~IMessageView() = default;
};

} // namespace pba
