// SPDX-License-Identifier: Apache-2.0
// The reset of a forgotten password in three steps: entropy, challenge, response.
#pragma once

#include <cstdint>

#include "kro/result.h"
#include "kro/string.h"
#include "kro/vector.h"
#include "pba/message_view.h"

namespace pba {

// Implemented by the host.
class IPasswordRecoveryLogic
{
public:
    virtual ~IPasswordRecoveryLogic() = default;

    // As many bytes as StartEntropyCollection asked for. Wiped after a successful call.
    virtual kro::result_t SetEntropy(const kro::vector_t<std::uint8_t> &entropy) = 0;
    // One line of 17 characters, 0 to 9 and A to Z, without separators. kFalse rejects it, any other answer
    // lets it pass. No request made inside is carried out before the person's next step.
    virtual kro::result_t CheckResponseLine(const kro::string_t &line) = 0;
    // All lines that passed, in order. Both flags arrive as false: `*valid` false rejects the response,
    // `*valid` with `*complete` false asks for another line.
    virtual kro::result_t CheckResponse(const kro::vector_t<kro::string_t> &lines, bool *complete,
                                        bool *valid) = 0;
    // The response was accepted and the person goes on to a new password.
    virtual kro::result_t GotoChangePassword() = 0;
    // True offers "Quit" on the recovery pages.
    virtual bool IsRecoveryInProgress() = 0;
    // The result is not looked at.
    virtual kro::result_t QuitRecovery() = 0;
    virtual kro::result_t RestartRecovery() = 0;
};

// Implemented by the view.
class IPasswordRecoveryView : public IMessageView
{
public:
    virtual void SetLogic(IPasswordRecoveryLogic *logic) = 0;
    // `amount` in bytes. More than a million cannot be had: the person sees an internal error, kOutOfMemory,
    // and the page stays.
    virtual kro::result_t StartEntropyCollection(std::uint32_t amount) = 0;
    // UTF-8 strings, shown in groups of four characters; white space in them is dropped.
    virtual kro::result_t ShowChallenge(const kro::vector_t<kro::string_t> &challenge) = 0;
    virtual kro::result_t StartResponceInput() = 0;

protected:
    ~IPasswordRecoveryView() = default;
};

} // namespace pba
