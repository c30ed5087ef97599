// SPDX-License-Identifier: Apache-2.0
#include "admin/token.h"

#include <algorithm>

#include "admin/failure.h"
#include "admin/json_output.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/signals.h"
#include "admin/table.h"
#include "admin/volume_session.h"
#include "volume/luks/users.h"
#include "volume/token/modules.h"
#include "volume/token/uri.h"
#include "volume/token/volume_tokens.h"

namespace admin {
namespace {

using nlohmann::json;
using token::Token;
using token::VolumeToken;
using volume::Header;

void RequireToken(token::Error error)
{
    if (error != token::Error::None)
        throw Failure(std::string("token: ") + token::Describe(error));
}

void CheckArguments(const TokenOptions &options)
{
    CheckName(options.name);
    const token::Uri uri = token::ParseUri(options.uri);
    if (!uri)
        throw Failure("--token: not a PKCS#11 URI; pba_admin token list shows those of connected tokens",
                      kExitUsage);
    if (token::HoldsPin(uri.get()))
        throw Failure("--token: leave the PIN out of the URI; it is asked for", kExitUsage);
}

void RequireModules(const token::Modules &modules, const TokenOptions &options)
{
    if (modules.AreLoaded())
        return;
    throw Failure(options.module.empty()
                      ? "no PKCS#11 module can be loaded; name one with --pkcs11-module"
                      : "--pkcs11-module: " + options.module + " cannot be loaded as a PKCS#11 module");
}

Token FindToken(token::Modules &modules, const TokenOptions &options)
{
    const std::string &uri = options.uri;
    std::vector<Token> tokens = modules.Connected();
    RequireModules(modules, options);
    std::erase_if(tokens, [&](const Token &token) { return !token.Matches(uri); });
    if (tokens.empty())
        throw Failure(uri + ": no connected token with a PIN is meant; pba_admin token list shows them");
    if (tokens.size() > 1)
        throw Failure(uri + ": means several connected tokens; add serial= to it");
    return tokens.front();
}

void CheckNotEnrolled(const Header &header, const Token &token)
{
    for (const token::Enrolment &enrolment : token::EnrolmentsOf(header)) {
        if (token.Matches(enrolment.uri))
            throw Failure(header.Path() + ": the token is enrolled already, for keyslot " +
                          std::to_string(enrolment.keyslots.front()) + "; remove that one first");
    }
}

// What was wrapped must come back from the token before the volume depends on it.
token::Wrapped WrapAndProve(const Token &token, const TokenOptions &options, const PasswordSource &passwords)
{
    const base::Secret pin = token.HasPinPad() ? base::Secret() : passwords.Pin();
    token::Session session(token, pin.View());
    RequireToken(session.Login());
    token::Wrapped wrapped;
    RequireToken(token::Wrap(session, token, options.uri, &wrapped));
    const auto isTheSame = [&](const base::Secret &passphrase) {
        return passphrase.View() == wrapped.passphrase.View();
    };
    RequireToken(token::Unwrap(session, wrapped.enrolment, isTheSame));
    return wrapped;
}

bool IsConnected(const VolumeToken &token, const std::vector<Token> &connected)
{
    return std::any_of(connected.begin(), connected.end(),
                       [&](const Token &candidate) { return candidate.Matches(token.enrolment.uri); });
}

json Describe(const VolumeToken &token, const std::vector<Token> &connected)
{
    return {{"keyslots", token.enrolment.keyslots},
            {"domain", token.owner.domain},
            {"user", token.owner.user},
            {"uri", token.enrolment.uri},
            {"connected", IsConnected(token, connected)}};
}

std::string State(const Token &token)
{
    if (token.IsPinLocked())
        return "PIN locked";
    return token.HasPinPad() ? "PIN pad" : "ready";
}

json Describe(const Token &token)
{
    return {
        {"label", token.Label()}, {"serial", token.Serial()}, {"state", State(token)}, {"uri", token.Uri()}};
}

std::string Join(const std::vector<int> &numbers)
{
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : ",") + std::to_string(number);
    return text;
}

void PrintVolumeTokens(const std::vector<VolumeToken> &tokens, const std::vector<Token> &connected)
{
    std::vector<Row> rows;
    for (const VolumeToken &token : tokens) {
        rows.push_back({Join(token.enrolment.keyslots), token.owner.user, token.owner.domain,
                        IsConnected(token, connected) ? "yes" : "no", token.enrolment.uri});
    }
    PrintTable({"KEYSLOT", "USER", "DOMAIN", "CONNECTED", "URI"}, rows);
}

void PrintConnectedTokens(const std::vector<Token> &tokens)
{
    std::vector<Row> rows;
    for (const Token &token : tokens)
        rows.push_back({token.Label(), token.Serial(), State(token), token.Uri()});
    PrintTable({"LABEL", "SERIAL", "STATE", "URI"}, rows);
}

template <typename Element, typename DescribeOne>
void PrintAll(const std::vector<Element> &elements, const DescribeOne &describe)
{
    json rows = json::array();
    for (const Element &element : elements)
        rows.push_back(describe(element));
    PrintJson(rows);
}

} // namespace

void EnrollToken(const TokenOptions &options)
{
    CheckArguments(options);
    const std::unique_ptr<Header> header = OpenVolumeForChange(options.volume);
    if (!volume::FindUser(*header, options.name))
        CheckNewName(options.name);
    token::Modules modules(options.module);
    const Token token = FindToken(modules, options);
    CheckNotEnrolled(*header, token);

    const PasswordSource passwords(options.passwordFromStandardInput);
    const base::Secret volumeKey = Authorise(*header, passwords);
    const token::Wrapped wrapped = WrapAndProve(token, options, passwords);
    int keyslot = -1;
    const Progress progress("making the token's keyslot");
    const HeldSignals held;
    Require(token::AddToken(*header, volumeKey, wrapped, options.name, &keyslot), *header);
}

void ListTokens(const TokenOptions &options)
{
    token::Modules modules(options.module);
    const std::vector<Token> connected = modules.Connected();
    // What the volume knows can be told without.
    if (options.volume.empty() || !options.module.empty())
        RequireModules(modules, options);
    if (options.volume.empty()) {
        options.json ? PrintAll(connected, [](const Token &token) { return Describe(token); })
                     : PrintConnectedTokens(connected);
        return;
    }
    const std::vector<VolumeToken> tokens = token::TokensOf(*OpenVolume(options.volume));
    options.json ? PrintAll(tokens, [&](const VolumeToken &token) { return Describe(token, connected); })
                 : PrintVolumeTokens(tokens, connected);
}

void DropToken(const TokenOptions &options)
{
    const std::unique_ptr<Header> header = OpenVolumeForChange(options.volume);
    const std::vector<VolumeToken> tokens = token::TokensOf(*header);
    const bool known = std::any_of(tokens.begin(), tokens.end(), [&](const VolumeToken &token) {
        const std::vector<int> &keyslots = token.enrolment.keyslots;
        return std::find(keyslots.begin(), keyslots.end(), options.keyslot) != keyslots.end();
    });
    if (!known)
        throw Failure(options.volume + ": keyslot " + std::to_string(options.keyslot) +
                      " is no token's; pba_admin token list shows them");
    const HeldSignals held;
    Require(token::RemoveToken(*header, options.keyslot), *header);
}

} // namespace admin
