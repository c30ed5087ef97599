// SPDX-License-Identifier: Apache-2.0
// What the help desk has answered: a line of JSON for each response, beside the escrow.
#pragma once

#include <optional>
#include <string>

#include "volume/recovery/challenge.h"
#include "volume/recovery/escrow_record.h"
#include "volume/luks/user.h"

namespace admin {

class ResponseLog
{
public:
    explicit ResponseLog(const std::string &escrow)
        : m_path(escrow + ".log")
    {
    }

    // When another challenge was answered from this record, if ever. Throws Failure.
    std::optional<std::string> FindOther(const recovery::Identity &identity,
                                         const recovery::Challenge &challenge) const;
    // On the disk for good when it returns. Throws Failure.
    void Add(const recovery::EscrowSecret &record, const volume::UserName &name,
             const recovery::Challenge &challenge) const;

private:
    std::string m_path;
};

} // namespace admin
