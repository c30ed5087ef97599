// SPDX-License-Identifier: Apache-2.0
// What happens at the help desk: pba_admin recovery respond.
#include <algorithm>
#include <iostream>
#include <unistd.h>

#include "admin/escrow_search.h"
#include "admin/failure.h"
#include "admin/line_input.h"
#include "admin/recovery.h"
#include "admin/recovery_keys.h"
#include "admin/response_log.h"
#include "admin/volume_session.h"
#include "base/text.h"
#include "volume/recovery/challenge.h"
#include "volume/recovery/response.h"

namespace admin {
namespace {

using recovery::Challenge;
using recovery::EscrowSecret;

constexpr std::size_t kGroup = 4; // as the screens show them
constexpr const char *kSpelling[] = {
    "Zero",  "One",     "Two",   "Three",   "Four",   "Five",     "Six",     "Seven",  "Eight",
    "Nine",  "Alfa",    "Bravo", "Charlie", "Delta",  "Echo",     "Foxtrot", "Golf",   "Hotel",
    "India", "Juliett", "Kilo",  "Lima",    "Mike",   "November", "Oscar",   "Papa",   "Quebec",
    "Romeo", "Sierra",  "Tango", "Uniform", "Victor", "Whiskey",  "X-ray",   "Yankee", "Zulu"};

bool AtTerminal()
{
    return isatty(STDIN_FILENO) != 0;
}

// What is wrong with a string; empty when nothing is.
std::string FindFault(const std::optional<base::Secret> &code, std::size_t row)
{
    const std::string which = "string " + std::to_string(row + 1);
    if (!code)
        return which + " has a character that is none of a challenge's";
    const std::size_t expected = recovery::kChallengeDigits + 1;
    if (code->Size() != expected)
        return which + " has " + std::to_string(code->Size()) + " characters instead of " +
               std::to_string(expected);
    if (recovery::IsChallengeString(code->View(), row))
        return {};
    for (std::size_t other = 0; other < recovery::kChallengeStrings; ++other) {
        if (recovery::IsChallengeString(code->View(), other))
            return which + " is wrong; it would be right as string " + std::to_string(other + 1);
    }
    return which + " is wrong; compare it with the caller's, character by character";
}

base::Secret ReadString(std::size_t row)
{
    if (AtTerminal())
        std::cerr << "String " << row + 1 << ": " << std::flush;
    base::Secret line;
    if (ReadSecretLine(STDIN_FILENO, &line) == LineStatus::Ended)
        throw Failure("the input ended where string " + std::to_string(row + 1) +
                      " of the challenge was expected");
    return line;
}

// A person at the terminal may correct a string, a script may not.
std::string AskString(std::size_t row)
{
    for (;;) {
        const auto code = base::NormaliseCode(ReadString(row).View());
        const std::string fault = FindFault(code, row);
        if (fault.empty())
            return std::string(code->View());
        if (!AtTerminal())
            throw Failure(fault);
        std::cerr << fault << '\n';
    }
}

Challenge AskChallenge()
{
    recovery::ChallengeStrings strings;
    for (std::size_t row = 0; row < strings.size(); ++row)
        strings[row] = AskString(row);
    const std::optional<Challenge> challenge = recovery::DecodeChallenge(strings);
    if (!challenge)
        throw Failure("the challenge is of another version; use the pba_admin that belongs to the computer");
    return *challenge;
}

struct FoundSecret
{
    EscrowSecret secret;
    bool superseded; // the computer has a newer record
};

FoundSecret FindSecret(const std::vector<recovery::EscrowRecord> &records, const recovery::SecretKey &key,
                       const Challenge &challenge, const RecoveryOptions &options)
{
    std::vector<recovery::Bytes<16>> volumes; // of the newer records
    for (const recovery::EscrowRecord &record : records) {
        std::optional<EscrowSecret> secret = recovery::UnsealRecord(record, key);
        if (!secret)
            continue;
        const recovery::Bytes<16> volume = secret->identity.volume;
        if (recovery::BelongsTo(challenge, secret->identity))
            return {std::move(*secret), std::count(volumes.begin(), volumes.end(), volume) > 0};
        volumes.push_back(volume);
    }
    if (volumes.empty())
        throw Failure(options.escrow + ": what it has of " + options.machine +
                      " was altered or is sealed for another key than " +
                      recovery::Fingerprint(recovery::PublicKeyOf(key)));
    throw Failure("this is not a challenge of the computer " + options.machine +
                  ": a string was misheard, or it is another computer");
}

// What the person at the desk should know before reading the response out.
void Warn(const FoundSecret &found, const std::optional<std::string> &answeredBefore)
{
    if (found.superseded)
        std::cerr
            << "pba_admin: note: the computer's recovery has been renewed since; unless that failed, the "
               "caller has an old copy of its header\n";
    if (answeredBefore)
        std::cerr << "pba_admin: note: this computer's secret has been given out before, on "
                  << base::Printable(*answeredBefore) << "; renew it with pba_admin recovery renew\n";
}

void Spell(std::string_view group)
{
    std::cout << "  " << group << ' ';
    for (char c : group)
        std::cout << ' ' << kSpelling[c <= '9' ? c - '0' : c - 'A' + 10];
    std::cout << '\n';
}

// By hand: a library would leave copies of them behind.
void PrintJson(const recovery::ResponseLines &lines)
{
    std::cout << "{\"response\": [";
    for (std::size_t row = 0; row < lines.size(); ++row)
        std::cout << (row == 0 ? "\"" : ", \"") << lines[row].View() << '"';
    std::cout << "]}\n";
}

void Print(const recovery::ResponseLines &lines, bool spell)
{
    for (std::size_t row = 0; row < lines.size(); ++row) {
        const std::string_view line = lines[row].View();
        std::cout << "String " << row + 1 << ':';
        for (std::size_t place = 0; place < line.size(); place += kGroup)
            std::cout << ' ' << line.substr(place, kGroup);
        std::cout << '\n';
        for (std::size_t place = 0; spell && place < line.size(); place += kGroup)
            Spell(line.substr(place, kGroup));
    }
}

} // namespace

void RespondToChallenge(const RecoveryOptions &options)
{
    CheckName(options.name);
    const auto records = FindRecords(options.escrow, options.machine);
    if (records.empty())
        throw Failure(options.escrow + ": no record of a computer named " + options.machine +
                      "; ask the caller to spell the name on the screen");
    const recovery::SecretKey key = OpenSecretKeyIn(options.keys, options.passphraseFromStandardInput);
    const Challenge challenge = AskChallenge();
    const FoundSecret found = FindSecret(records, key, challenge, options);
    const recovery::Identity &identity = found.secret.identity;
    const auto lines =
        recovery::MakeResponse(key, identity, challenge.ephemeral, found.secret.secret, options.name);
    if (!lines)
        throw Failure("no computer makes such a challenge; do not answer it");
    const ResponseLog log(options.escrow);
    Warn(found, log.FindOther(identity, challenge));
    log.Add(found.secret, options.name, challenge);
    if (options.json)
        PrintJson(*lines);
    else
        Print(*lines, options.spell);
}

} // namespace admin
