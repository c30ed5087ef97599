// SPDX-License-Identifier: Apache-2.0
// Marks what the platform library offers.
#pragma once

#define PBE_EXPORT __attribute__((visibility("default")))
