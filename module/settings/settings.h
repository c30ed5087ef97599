// SPDX-License-Identifier: Apache-2.0
// The configuration of the view: the constant settings, loaded once on first use, and the memory of the last
// user and domain. The constant settings never fail: what cannot be used gives way to built-in defaults.
#pragma once

#include <string>

#include <QString>

#include "kro/result.h"
#include "settings_format/settings_decoder.h"
#include "settings_format/settings_record.h"

namespace pba {

class Settings
{
public:
    void LoadConstantSettingsIfNeeded();
    const std::u16string &GetHostName();
    const PrebootSettings &GetPrebootSettings();

    kro::result_t ReadConstantSettingsFromFile(const char16_t *path);
    void LoadDefaultConstantSettings();

    // Kept in files and read anew each time: settings_last_user.cpp. The user name is remembered only where
    // the installation has placed its file, the domain always.
    bool IsLastDomainSaved() const;
    QString ReadLastDomain() const;
    void WriteLastDomain(const QString &domain) const;
    QString ReadLastUser() const;
    void WriteLastUser(const QString &userName) const;

private:
    bool ReadAndCheck();
    kro::result_t ReadFromFileInternal(const QString &path);
    kro::result_t ReadStream(const QString &path);

    bool m_loaded = false;
    ConstantSettingsRecord m_record;
    SettingsStream m_stream;
};

} // namespace pba
