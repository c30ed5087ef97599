// SPDX-License-Identifier: Apache-2.0
// Owning pointers to the objects of libxkbcommon.
#pragma once

#include <memory>

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/layouts/unreference.h"

namespace layouts {

using XkbContext = std::unique_ptr<xkb_context, Unreference<xkb_context_unref>>;
using XkbKeymap = std::unique_ptr<xkb_keymap, Unreference<xkb_keymap_unref>>;
using XkbState = std::unique_ptr<xkb_state, Unreference<xkb_state_unref>>;
using XkbComposeTable = std::unique_ptr<xkb_compose_table, Unreference<xkb_compose_table_unref>>;
using XkbComposeState = std::unique_ptr<xkb_compose_state, Unreference<xkb_compose_state_unref>>;

// Shared by all keymaps; null when there is no data to make keymaps of.
xkb_context *SharedContext();

} // namespace layouts
