// SPDX-License-Identifier: Apache-2.0
#include "host/service/unlock_session.h"

#include "host/log.h"
#include "volume/luks/activation.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"

namespace host {

using volume::Error;

namespace {

constexpr std::uint32_t kDefaultMilliseconds = 2000; // of a login, where no user has a password yet

} // namespace

UnlockSession::UnlockSession(volume::Header &header, const Clock &clock, UnlockOptions options)
    : m_header(header)
    , m_clock(clock)
    , m_options(std::move(options))
{
}

void UnlockSession::LookAnew()
{
    if (const Error error = m_header.Load(); error != Error::None)
        Log(kLogErrors, std::string("The header cannot be read anew: ") + volume::Describe(error));
}

Error UnlockSession::OpenVolume(const volume::UserName &name, const base::Secret &password)
{
    Forget();
    if (!TakesPasswords())
        return Error::Prohibited;
    const Error error = volume::Users(m_header).Login(name, password, &m_volumeKey);
    m_opened = error == Error::None;
    if (!m_opened)
        return error;
    m_name = name;
    m_mustReplace = HasExpired() && CheckReplaceable() == Error::None;
    return error;
}

Error UnlockSession::OpenKeyslots(const std::vector<int> &keyslots, const base::Secret &passphrase)
{
    Forget();
    Error error = Error::WrongPassword;
    for (auto keyslot = keyslots.begin(); keyslot != keyslots.end() && error == Error::WrongPassword;
         ++keyslot)
        error = m_header.OpenKeyslot(*keyslot, passphrase, &m_volumeKey);
    m_opened = error == Error::None;
    return error;
}

void UnlockSession::Recover(const volume::UserName &name, base::Secret volumeKey)
{
    Forget();
    m_name = name;
    m_volumeKey = std::move(volumeKey);
    m_recovered = true;
}

void UnlockSession::Forget()
{
    m_opened = false;
    m_recovered = false;
    m_mustReplace = false;
    m_name = {};
    m_volumeKey.Wipe();
}

Error UnlockSession::CheckReplaceable() const
{
    if (!volume::FindUser(m_header, m_name))
        return Error::NoUser;
    const Error error = m_header.CheckWritable();
    return error == Error::None && m_header.RoomLeft().keyslots < 1 ? Error::NoSpace : error;
}

bool UnlockSession::HasExpired() const
{
    const std::optional<volume::User> user = volume::FindUser(m_header, m_name);
    return user && volume::HasExpired(volume::PolicyOf(m_header), *user, m_clock.Now());
}

Error UnlockSession::ReplacePassword(const base::Secret &password)
{
    if (!m_opened && !m_recovered)
        return Error::WrongPassword;
    Error error = volume::Users(m_header).CheckNewPassword(m_name, password);
    if (error == Error::PasswordTooShort || error == Error::PasswordUnchanged || error == Error::OutOfMemory)
        return error;
    m_mustReplace = false;
    if (error != Error::None)
        return error;
    volume::Users users(m_header);
    users.UseDate(m_clock.Now());
    // Only who came in by the recovery can spare the old password before the new one is proven.
    error = users.ReplacePassword(m_name, m_volumeKey, password,
                                  volume::KeyCost::ForPassword(kDefaultMilliseconds),
                                  m_recovered ? volume::WhenFull::DropOld : volume::WhenFull::Refuse);
    if (error == Error::None || error == Error::OldPasswordStays) {
        m_opened = true;
        m_recovered = false;
    }
    return error;
}

kro::result_t UnlockSession::Start()
{
    if (m_options.testBoot) {
        m_testBootEnded = true;
        return kro::kOk;
    }
    if (m_started)
        return kro::kOk;
    if (!MayStart()) {
        Log(kLogErrors, "The operating system was asked for without an opened keyslot or with an expired "
                        "password; refused.");
        return kro::kProhibited;
    }
    const kro::result_t result = m_options.mapperName.empty() ? kro::kOk : MapVolume();
    m_started = !kro::Failed(result);
    return result;
}

kro::result_t UnlockSession::MapVolume()
{
    const Error error = volume::Activate(m_header, m_options.mapperName, m_options.mapperFlags, m_volumeKey);
    if (error != Error::None) {
        Log(kLogErrors, "The volume cannot be mapped: " + std::string(volume::Describe(error)) + " " +
                            m_header.LastDetail());
        return kro::kUnspecifiedError;
    }
    m_volumeKey.Wipe();
    return kro::kOk;
}

bool UnlockSession::HasStarted() const
{
    return m_started && (m_options.mapperName.empty() || volume::IsActiveAs(m_header, m_options.mapperName));
}

} // namespace host
