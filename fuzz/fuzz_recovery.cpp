// SPDX-License-Identifier: Apache-2.0
// What the recovery reads that somebody else may have written: the object of a header, a line of the escrow,
// a public key, and what a person types. An accepted object stays the same when it is written again.
#include <cstdlib>

#include "volume/recovery/administrator_key.h"
#include "base/code_string.h"
#include "volume/recovery/enrolment.h"
#include "volume/recovery/escrow_record.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const recovery::Bytes<16> uuid{};
    if (const auto enrolment = recovery::DecodeEnrolment(text, uuid)) {
        const auto again = recovery::DecodeEnrolment(recovery::EncodeEnrolment(*enrolment), uuid);
        if (!again || !(again->identity == enrolment->identity) || again->keyslots != enrolment->keyslots ||
            again->administrator != enrolment->administrator || again->used != enrolment->used ||
            again->pending != enrolment->pending)
            std::abort();
    }
    if (const auto record = recovery::ParseRecord(text))
        static_cast<void>(recovery::UnsealRecord(*record, recovery::SecretKey()));
    static_cast<void>(recovery::DecodePublicKey(text));
    if (const auto code = base::NormaliseCode(text))
        static_cast<void>(base::IsCodeString(code->View(), 15, base::kFirstChallengeRow));
    return 0;
}
