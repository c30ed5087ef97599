#include "os_start.h"

#include "log.h"

namespace host {

using volume::Error;

OsStart::OsStart(volume::Volume &volume, StartOptions options)
    : m_volume(volume)
    , m_options(std::move(options))
{
}

Error OsStart::OpenVolume(const volume::UserName &name, const volume::Secret &password)
{
    m_opened = false;
    m_volumeKey.Wipe();
    const Error error = m_volume.Login(name, password, m_options.mapperName.empty() ? nullptr : &m_volumeKey);
    m_opened = error == Error::None;
    return error;
}

kro::result_t OsStart::Start()
{
    if (m_options.testBoot) {
        m_testBootEnded = true;
        return kro::kOk;
    }
    if (m_started)
        return kro::kOk;
    if (!m_opened) {
        Log(kLogErrors, "The operating system was asked for without an opened keyslot; refused.");
        return kro::kProhibited;
    }
    const kro::result_t result = m_options.mapperName.empty() ? kro::kOk : MapVolume();
    m_started = !kro::Failed(result);
    return result;
}

kro::result_t OsStart::MapVolume()
{
    const Error error = m_volume.Activate(m_options.mapperName, m_volumeKey);
    if (error != Error::None) {
        Log(kLogErrors, "The volume cannot be mapped: " + std::string(volume::Describe(error)) + " " +
                            m_volume.LastDetail());
        return kro::kUnspecifiedError;
    }
    m_volumeKey.Wipe();
    return kro::kOk;
}

bool OsStart::HasStarted() const
{
    return m_started && (m_options.mapperName.empty() || m_volume.IsActiveAs(m_options.mapperName));
}

} // namespace host
