// SPDX-License-Identifier: Apache-2.0
// Hot-plug notifications: values of QEvent::Type that the platform posts to the top-level windows of the
// application, on its own thread. Free of Qt.
#pragma once

namespace pbe {

inline constexpr int kTokenAdded = 1003;
inline constexpr int kTokenRemoved = 1004;
inline constexpr int kMouseAdded = 1005;
inline constexpr int kMouseRemoved = 1006;

} // namespace pbe
