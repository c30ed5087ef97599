// SPDX-License-Identifier: Apache-2.0
// Login by token or smart card and PIN.
#pragma once

#include <cstdint>

#include "kro/result.h"
#include "kro/string.h"
#include "kro/vector.h"
#include "pba/message_view.h"

namespace pba {

class IMainView;

struct TokenRecord
{
    // UTF-8, shown to the person.
    kro::string_t name;
    // The host's own mark of the token; the view does not look at it.
    kro::string_t id;
};

// Implemented by the host.
class ILoginByTokenLogic
{
public:
    virtual ~ILoginByTokenLogic() = default;

    // Never called.
    virtual kro::result_t Reserved() = 0;
    // Appends the connected tokens to the empty `*tokens`.
    virtual kro::result_t GetTokens(kro::vector_t<TokenRecord> *tokens) = 0;
    // `index` is the token's place, from 0, in the last answer of GetTokens. The PIN is UTF-8, may be empty,
    // and is wiped after the call.
    virtual kro::result_t LoginByToken(std::int32_t index, const kro::string_t &pin) = 0;
};

// Implemented by the view.
class ILoginByTokenView : public IMessageView
{
public:
    virtual IMainView *GetMainView() = 0;
    virtual void SetLogic(ILoginByTokenLogic *logic) = 0;
    // As ILoginByPasswordView::ShowLoggedIn.
    virtual kro::result_t ShowLoggedIn() = 0;

protected:
    ~ILoginByTokenView() = default;
};

} // namespace pba
