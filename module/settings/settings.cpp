// SPDX-License-Identifier: Apache-2.0
#include "module/settings/settings.h"

#include <new>

#include "module/settings/input_locale_checks.h"
#include "module/settings/paths.h"
#include "module/settings/pba_file.h"
#include "module/trace/trace.h"

namespace pba {

namespace {

constexpr char kLoadIfNeeded[] = "pba::Settings::LoadConstantSettingsIfNeeded";
constexpr char kReadFromFile[] = "pba::Settings::ReadConstantSettingsFromFile";
constexpr char kLoadDefault[] = "pba::Settings::LoadDefaultConstantSettings";

kro::result_t Resize(std::vector<std::uint8_t> &bytes, qint64 size)
{
    try {
        bytes.resize(static_cast<std::size_t>(size));
        return kro::kOk;
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
}

} // namespace

void Settings::LoadConstantSettingsIfNeeded()
{
    TraceScope trace(kLoadIfNeeded);
    if (m_loaded)
        return;
    if (!ReadAndCheck())
        LoadDefaultConstantSettings();
    m_loaded = true;
}

const std::u16string &Settings::GetHostName()
{
    LoadConstantSettingsIfNeeded();
    return m_record.hostName;
}

const PrebootSettings &Settings::GetPrebootSettings()
{
    LoadConstantSettingsIfNeeded();
    return m_record.prebootSettings;
}

bool Settings::ReadAndCheck()
{
    if (kro::Failed(ReadConstantSettingsFromFile(kSettingsPath)))
        return false;
    const kro::result_t result = fde::boot::CheckInputLocales(m_record.prebootSettings);
    if (kro::Failed(result))
        TraceError(kLoadIfNeeded, __LINE__, result) << "CheckInputLocales failed";
    return !kro::Failed(result);
}

kro::result_t Settings::ReadConstantSettingsFromFile(const char16_t *path)
{
    TraceScope trace(kReadFromFile);
    const kro::result_t result = ReadFromFileInternal(QString::fromUtf16(path));
    trace.SetResult(result);
    return result;
}

kro::result_t Settings::ReadFromFileInternal(const QString &path)
{
    TraceCall("ReadFromFileInternal", path);
    if (!PbaFileExists(path))
        return kro::kNotFound;
    kro::result_t result = ReadStream(path);
    if (kro::Failed(result))
        return result;
    result = DecodeSettings(&m_stream, &m_record);
    if (kro::Failed(result))
        TraceError(kReadFromFile, __LINE__, result) << "Cannot deserialize file \"" << path << "\".";
    return result;
}

// The whole file into the stream.
kro::result_t Settings::ReadStream(const QString &path)
{
    QFile file;
    if (kro::Failed(OpenPbaFile(file, path, QIODevice::ReadOnly))) {
        TraceError(kReadFromFile, __LINE__, kro::kAccessDenied)
            << "File \"" << path << "\" cannot be opened for reading.";
        return kro::kAccessDenied;
    }
    const qint64 size = file.size();
    const kro::result_t result = Resize(m_stream.bytes, size);
    if (kro::Failed(result)) {
        TraceError(kReadFromFile, __LINE__, result) << "Resize failed";
        return result;
    }
    const qint64 read = file.read(reinterpret_cast<char *>(m_stream.bytes.data()), size);
    if (read < 0) {
        TraceError(kReadFromFile, __LINE__, kro::kAccessDenied) << "Cannot read file \"" << path << "\".";
        return kro::kAccessDenied;
    }
    if (read != size) {
        TraceError(kReadFromFile, __LINE__, kro::kUnexpected)
            << "Unexpected reading of file \"" << path
            << "\". Read size: " << static_cast<std::uint64_t>(read)
            << ". Original size: " << static_cast<std::uint64_t>(size);
        return kro::kUnexpected;
    }
    return kro::kOk;
}

void Settings::LoadDefaultConstantSettings()
{
    TraceScope trace(kLoadDefault);
    m_record.hostName = u"Host name";
    PrebootSettings &settings = m_record.prebootSettings;
    settings.languageSwitchHotkey = {kModifierAlt, 0x0010};
    settings.keyboardLayoutSwitchHotkey = {kModifierCtrl, 0x0010};
    settings.capsLockTurnOffHotkey = {0x0000, 0x0014};
    settings.inputLanguages = {{1033, u"English", {{0x00000409, u"US", {kModifierCtrl, 0x0031}}}}};
}

} // namespace pba
