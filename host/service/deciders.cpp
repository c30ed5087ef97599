// SPDX-License-Identifier: Apache-2.0
#include "host/service/deciders.h"

#include "host/service/last_login.h"
#include "volume/luks/mapper_options.h"

namespace host {
namespace {

std::unique_ptr<StateStore> MakeStateStore(const CommandLine &line, volume::Header &header)
{
    if (line.stateInHeader)
        return std::make_unique<HeaderStateStore>(header);
    return std::make_unique<FileStateStore>();
}

} // namespace

Deciders::Deciders(const CommandLine &line, volume::Header &header)
    : unlockSession(header, clock,
                    {line.mapperName, line.testBoot, !line.noPasswordLogin,
                     volume::ActivationFlags(line.mapperOptions)})
    , store(MakeStateStore(line, header))
    , throttle(*store, clock, [&header] { return volume::PolicyOf(header); })
    , autologonAllowed(line.autologonAllowed && volume::PolicyOf(header).autologonAllowed)
{
    if (line.stateInHeader && throttle.FormerLogin())
        RestoreLastLogin(*throttle.FormerLogin());
}

} // namespace host
