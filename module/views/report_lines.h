// SPDX-License-Identifier: Apache-2.0
// The line numbers that internal-error reports carry. Support staff look them up, so they stay what they are
// however the sources move; a report that is not listed here carries its real line, that of the call.
#pragma once

#include "kro/result.h"

namespace pba {

// What a call has answered, and where it stands: to be made of the call itself, in one line.
struct CallResult
{
    CallResult(kro::result_t answered, int lineOfCall = __builtin_LINE())
        : code(answered)
        , line(lineOfCall)
    {
    }

    kro::result_t code;
    int line;
};

namespace report_line {

inline constexpr int kOnLoginStart = 629;
inline constexpr int kOnLoginLogin = 640;
inline constexpr int kOnSavePassword = 697;
inline constexpr int kOnCancelChangePassword = 714;
inline constexpr int kOnTokenPinEntered = 1006;
inline constexpr int kOnUpdateConnectedTokens = 1035;
inline constexpr int kShowChangePassword = 1307;
inline constexpr int kShowLoggedInStartOs = 1329;
inline constexpr int kShowLoggedInChangeInfo = 1344;
inline constexpr int kShowLoggedInConfirm = 1365;
inline constexpr int kIsAnyTokenConnected = 1644;
inline constexpr int kShowLoginByPassword = 1664;
inline constexpr int kShowLoginByToken = 1684;
inline constexpr int kUpdateTokenList = 1714;

} // namespace report_line

} // namespace pba
