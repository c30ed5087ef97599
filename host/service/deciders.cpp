// SPDX-License-Identifier: Apache-2.0
#include "host/service/deciders.h"

#include "host/service/last_login.h"
#include "volume/luks/mapper_options.h"

namespace host {
namespace {

std::unique_ptr<StateStore> MakeStateStore(const CommandLine &line, volume::Volume &volume)
{
    if (line.stateInHeader)
        return std::make_unique<HeaderStateStore>(volume);
    return std::make_unique<FileStateStore>();
}

} // namespace

Deciders::Deciders(const CommandLine &line, volume::Volume &volume)
    : unlockSession(volume, clock,
                    {line.mapperName, line.testBoot, !line.noPasswordLogin,
                     volume::ActivationFlags(line.mapperOptions)})
    , store(MakeStateStore(line, volume))
    , throttle(*store, clock, [&volume] { return volume.GetPolicy(); })
    , autologonAllowed(line.autologonAllowed && volume.GetPolicy().autologonAllowed)
{
    if (line.stateInHeader && throttle.FormerLogin())
        RestoreLastLogin(*throttle.FormerLogin());
}

} // namespace host
