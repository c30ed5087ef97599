// SPDX-License-Identifier: Apache-2.0
// An unlock session: who was let in and by what, whether that password must be replaced first, and whether
// the operating system may start: the one place that decides. The view asking for it proves nothing; an
// opened keyslot in this host's own hands does, and so does a test boot.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/service/clock.h"
#include "kro/result.h"
#include "volume/luks/header.h"
#include "volume/luks/user.h"

namespace host {

struct UnlockOptions
{
    std::string mapperName; // empty: a right password is enough, nothing is mapped
    bool testBoot = false;
    bool passwordLogin = true;
    std::uint32_t mapperFlags = 0; // of libcryptsetup
};

class UnlockSession
{
public:
    // `clock` says which passwords have expired; it must outlive this object.
    UnlockSession(volume::Header &header, const Clock &clock, UnlockOptions options);

    volume::Header &GetHeader() { return m_header; }
    bool IsTestBoot() const { return m_options.testBoot; }

    // Somebody else may have changed the header since: each attempt begins with it. What is known already
    // has to do where it cannot be read any more, and may still open the volume.
    void LookAnew();
    // A login attempt begins: what an earlier one opened counts no longer.
    void Forget();
    // Whether anybody may log on by password here; whoever came in by the recovery sets one all the same.
    bool TakesPasswords() const { return m_options.passwordLogin; }
    // By a user's password; forgets by itself. Prohibited where none are taken.
    [[nodiscard]] volume::Error OpenVolume(const volume::UserName &name, const base::Secret &password);
    // By the first of these keyslots that the passphrase opens; forgets by itself.
    [[nodiscard]] volume::Error OpenKeyslots(const std::vector<int> &keyslots,
                                             const base::Secret &passphrase);
    // This person has lost the password and proven another way in: nothing starts until it is replaced.
    void Recover(const volume::UserName &name, base::Secret volumeKey);
    // Who was let in last, empty after Forget; only then a password may be replaced.
    const volume::UserName &Name() const { return m_name; }
    bool HasRecovered() const { return m_recovered; }
    // Whether a password can be replaced here, as far as can be told without trying.
    [[nodiscard]] volume::Error CheckReplaceable() const;
    // Whether the policy asks whoever was let in for a new password.
    bool HasExpired() const;
    // That nothing starts before. Only while it can be replaced: a full or read-only header locks nobody out.
    bool MustReplacePassword() const { return m_mustReplace || m_recovered; }
    // As the volume's policy allows. OldPasswordStays counts as replaced. When it fails for another reason
    // than the password, an expired one does for this time.
    [[nodiscard]] volume::Error ReplacePassword(const base::Secret &password);

    // The volume is open for whoever was let in, and nothing is asked of that person before the start.
    bool MayStart() const { return m_opened && !m_mustReplace; }
    // Maps the volume when it is to be mapped. kProhibited without an opened keyslot; may be repeated.
    kro::result_t Start();

    // The mapped volume is looked up anew.
    bool HasStarted() const;
    bool HasTestBootEnded() const { return m_testBootEnded; }

private:
    kro::result_t MapVolume();

    volume::Header &m_header;
    const Clock &m_clock;
    UnlockOptions m_options;
    volume::UserName m_name;
    base::Secret m_volumeKey; // kept for mapping and for a new password
    bool m_opened = false;
    bool m_recovered = false;
    bool m_mustReplace = false;
    bool m_started = false;
    bool m_testBootEnded = false;
};

} // namespace host
