// Whether the operating system may start, and its start: the one place that decides. The view asking for it
// proves nothing; an opened keyslot in this host's own hands does, and so does a test boot.
#pragma once

#include <string>

#include "kro/result.h"
#include "volume/volume.h"

namespace host {

struct StartOptions
{
    std::string mapperName; // empty: a right password is enough, nothing is mapped
    bool testBoot = false;
};

class OsStart
{
public:
    OsStart(volume::Volume &volume, StartOptions options);

    bool IsTestBoot() const { return m_options.testBoot; }

    // A login attempt. What an earlier one opened counts no longer.
    [[nodiscard]] volume::Error OpenVolume(const volume::UserName &name, const volume::Secret &password);

    // Maps the volume when it is to be mapped. kProhibited without an opened keyslot; may be repeated.
    kro::result_t Start();

    // The mapped volume is looked up anew.
    bool HasStarted() const;
    bool HasTestBootEnded() const { return m_testBootEnded; }

private:
    kro::result_t MapVolume();

    volume::Volume &m_volume;
    StartOptions m_options;
    volume::Secret m_volumeKey; // kept only for mapping
    bool m_opened = false;
    bool m_started = false;
    bool m_testBootEnded = false;
};

} // namespace host
