// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/token_options.h"

#include <algorithm>

namespace host {

using std::chrono::milliseconds;

milliseconds TokenOptions::ListTimeout() const
{
    return std::min(timeout, milliseconds(10'000));
}

milliseconds TokenOptions::EndTimeout() const
{
    return std::min(timeout, milliseconds(3'000));
}

} // namespace host
