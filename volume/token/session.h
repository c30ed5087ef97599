// SPDX-License-Identifier: Apache-2.0
// A conversation with one token after its PIN was accepted. Secrets stay in locked memory; the PIN is not
// copied.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "volume/token/error.h"
#include "volume/token/token.h"
#include "base/secret.h"

namespace token {

class Session
{
public:
    // `pin` is only looked at, and must stay as long as this session: some keys want it for each use. A token
    // with a PIN pad gets none.
    Session(const Token &token, std::string_view pin)
        : m_token(token)
        , m_pin(pin)
    {
    }
    // Logs out.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    [[nodiscard]] Error Login();
    bool IsTokenThere() const { return AskAgain().has_value(); }

    std::vector<CK_OBJECT_HANDLE> Find(CK_OBJECT_CLASS kind);
    // As bytes; empty when the object does not tell.
    std::string Attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type);
    std::optional<CK_ULONG> Number(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type);
    bool IsSet(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type);

    // RSA with the padding of PKCS#1 v1.5. NoKey when this key does not decrypt it.
    [[nodiscard]] Error Decrypt(CK_OBJECT_HANDLE key, std::string_view encrypted, base::Secret *plain);
    // The secret that an elliptic-curve key shares with `point`, an uncompressed one; it has the length of a
    // coordinate. NoKey when this key does not take it.
    [[nodiscard]] Error Derive(CK_OBJECT_HANDLE key, std::string_view point, base::Secret *shared);

private:
    CK_FUNCTION_LIST *Module() const { return m_token.Module(); }
    CK_RV EnterPin(CK_USER_TYPE user);
    CK_RV TryDerive(CK_OBJECT_HANDLE key, const std::string &point, CK_OBJECT_HANDLE *shared);
    Error ReadValue(CK_OBJECT_HANDLE object, std::size_t length, base::Secret *value);
    Error Explain(CK_RV result, Error otherwise) const;
    Error ExplainWrongPin() const;
    std::optional<Description> AskAgain() const;

    Token m_token;
    std::string_view m_pin;
    CK_SESSION_HANDLE m_session = 0;
    bool m_open = false;
    bool m_loggedIn = false;
};

} // namespace token
