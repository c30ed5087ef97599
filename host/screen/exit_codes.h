// SPDX-License-Identifier: Apache-2.0
// How a screen tells the service why it has ended.
#pragma once

namespace host {

inline constexpr int kScreenDone = 0;        // the system starts, or the screen was told to end
inline constexpr int kScreenFailed = 1;      // another one in its place may fare better
inline constexpr int kScreenUsage = 2;       // from here on it has said by itself what is wrong
inline constexpr int kScreenClosed = 3;      // by the person, without a login
inline constexpr int kScreenNoAccess = 5;    // to the framebuffer
inline constexpr int kScreenCannotStand = 6; // no display, or walls that cannot be put up

} // namespace host
