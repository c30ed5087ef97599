// SPDX-License-Identifier: Apache-2.0
// What happens at the volume: pba_admin recovery enroll, renew and status.
#include <iostream>
#include <optional>

#include "admin/appended_line.h"
#include "admin/failure.h"
#include "admin/json_output.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/recovery.h"
#include "admin/recovery_keys.h"
#include "admin/signals.h"
#include "admin/volume_session.h"
#include "volume/recovery/escrow_record.h"
#include "volume/recovery/volume_recovery.h"

namespace admin {
namespace {

using volume::Header;

using Check = void (*)(const Header &);

void SetUp(const RecoveryOptions &options, Check check)
{
    const std::unique_ptr<Header> header = OpenVolumeForChange(options.volume);
    check(*header);
    const recovery::PublicKey administrator = ReadPublicKey(options.publicKey);
    const base::Secret volumeKey = Authorise(*header, PasswordSource(options.passwordFromStandardInput));

    const Progress progress("writing keyslot and record");
    const HeldSignals held; // half of it would stay until the next change
    std::optional<AppendedLine> record;
    const auto keep = [&](const recovery::Identity &identity, const recovery::RecoverySecret &secret) {
        recovery::EscrowSecret sealed{options.machine, identity, {}};
        std::copy(secret.View().begin(), secret.View().end(), sealed.secret.Data());
        record.emplace(options.escrow, recovery::SealRecord(sealed, administrator));
    };
    const volume::Error error = header->Change([&] {
        check(*header); // another administrator may have been quicker
        return recovery::SetUp(*header, volumeKey, administrator, keep);
    });
    // Where the header's state is not known the record may be the one that answers.
    if (record && (error == volume::Error::None || error == volume::Error::OldPasswordStays ||
                   error == volume::Error::NotUndone))
        record->Keep();
    if (error == volume::Error::OldPasswordStays)
        throw Failure(options.volume + ": renewed, but the former secret still opens it; renew once more");
    Require(error, *header);
}

void RequireNone(const Header &header)
{
    if (recovery::Find(header))
        throw Failure(header.Path() + ": has a recovery already; replace it with pba_admin recovery renew");
}

void RequireOne(const Header &header)
{
    if (!recovery::Find(header))
        throw Failure(header.Path() + ": has no recovery; set one up with pba_admin recovery enroll");
}

void PrintStatusJson(const std::optional<recovery::Found> &found)
{
    nlohmann::json status{{"recovery", found.has_value()}};
    if (found) {
        status["keyslot"] = found->enrolment.keyslots.front();
        status["administrator"] = recovery::Fingerprint(found->enrolment.administrator);
        status["record"] = recovery::ToHex(found->enrolment.identity.record);
        status["used"] = found->enrolment.used;
    }
    PrintJson(status);
}

void PrintStatus(const std::optional<recovery::Found> &found)
{
    if (!found) {
        std::cout << "Recovery:       not set up\n";
        return;
    }
    std::cout << "Recovery:       set up\n"
              << "Keyslot:        " << found->enrolment.keyslots.front() << '\n'
              << "Administrator:  " << recovery::Fingerprint(found->enrolment.administrator) << '\n'
              << "Record:         " << recovery::ToHex(found->enrolment.identity.record) << '\n'
              << "Secret:         "
              << (found->enrolment.used ? "used; renew it with pba_admin recovery renew" : "not used yet")
              << '\n';
}

} // namespace

void EnrollVolume(const RecoveryOptions &options)
{
    SetUp(options, RequireNone);
}

void RenewRecovery(const RecoveryOptions &options)
{
    SetUp(options, RequireOne);
}

void ShowRecovery(const RecoveryOptions &options)
{
    const std::optional<recovery::Found> found = recovery::Find(*OpenVolume(options.volume));
    if (options.json)
        PrintStatusJson(found);
    else
        PrintStatus(found);
}

} // namespace admin
