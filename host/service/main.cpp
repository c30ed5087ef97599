// SPDX-License-Identifier: Apache-2.0
// pba_host: lets a person open a LUKS2 volume. Who asks the person is a process of its own, pba_screen, or
// pba_text at a terminal; this one decides.
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>

#include "base/process_protection.h"
#include "base/text.h"
#include "host/log.h"
#include "host/service/deciders.h"
#include "host/service/exit_codes.h"
#include "host/service/runtime_directory.h"
#include "host/service/screen_commands.h"
#include "host/service/screen_keeper.h"
#include "host/service/stop_signals.h"
#include "pbe/files.h"
#include "pbe/log.h"
#include "volume/interrupted_changes.h"
#include "volume/luks/activation.h"

namespace {

using namespace host;

int Refuse(const std::string &what, int exitCode = kExitUsage)
{
    std::cerr << "pba_host: " << base::Printable(what) << '\n';
    return exitCode;
}

bool PreparePlatform(const CommandLine &line)
{
    PbeSetFileRoot(line.root.c_str());
    if (line.logSeverity)
        PbeSetLogSeverity(*line.logSeverity);
    return line.log.empty() || !kro::Failed(PbeSetLogFile(line.log.c_str()));
}

// The volume's header is whole before anybody logs on. Where it cannot be written that has to wait.
void FinishPending(volume::Header *header)
{
    const volume::Error error = FinishInterruptedChanges(*header);
    if (error != volume::Error::None)
        Log(kLogErrors, std::string("An interrupted change cannot be finished: ") + volume::Describe(error));
}

volume::Error OpenVolume(const CommandLine &line, std::unique_ptr<volume::Header> *opened)
{
    volume::Error error = volume::Header::Open(line.volume, opened);
    if (error == volume::Error::None && !line.mapperName.empty() && !line.testBoot)
        error = volume::CheckMapperName(**opened, line.mapperName);
    if (error == volume::Error::None)
        FinishPending(opened->get());
    return error;
}

// What the screen has said of its end is not said again.
int ExitCode(const UnlockSession &unlockSession, const ScreenKeeper &keeper)
{
    if (unlockSession.HasTestBootEnded())
        return kExitTestBootEnded;
    if (unlockSession.HasStarted())
        return kExitStarted;
    if (keeper.IsStopped() || !keeper.WhyGivenUp())
        return kExitSignal;
    const auto &[exitCode, why] = *keeper.WhyGivenUp();
    return why.empty() ? exitCode : Refuse(why, exitCode);
}

int RunHost(const CommandLine &line, TokenOptions tokens, ScreenKeeper *keeper)
{
    std::unique_ptr<volume::Header> header;
    volume::Error error = volume::Error::None;
    keeper->Prepare([&] { error = OpenVolume(line, &header); });
    if (keeper->IsStopped())
        return kExitSignal;
    if (error != volume::Error::None) {
        keeper->Dismiss();
        return Refuse(line.volume + ": " + volume::Describe(error),
                      error == volume::Error::NoAccess ? kExitNoAccess : kExitUsage);
    }
    Deciders deciders(line, *header);
    Service service(deciders.unlockSession, deciders.throttle, deciders.autologonAllowed, std::move(tokens));
    keeper->Run(service);
    return ExitCode(deciders.unlockSession, *keeper);
}

int Main(int argc, char **argv)
{
    int exitCode = 0;
    const std::optional<CommandLine> line = ParseCommandLine(argc, argv, &exitCode);
    if (!line)
        return exitCode;
    const Descriptor signals = Descriptor::Checked(TakeStopSignals());
    if (!PreparePlatform(*line))
        return Refuse(line->log + ": cannot be written; give --log another file");
    std::string fault;
    const std::string user = FindScreenUser(line->screenUser, &fault);
    const std::string tokenUser = FindTokenUser(line->tokenUser, &fault);
    if (!fault.empty())
        return Refuse(fault);
    const RuntimeDirectory runtime(user);
    const Terminals terminals;
    std::vector<ScreenCommand> screens = ScreenCommands(*line, user, terminals.IsTerminal());
    if (screens.empty())
        return Refuse("standard input is no terminal; start --text at one", kExitViewFailed);
    ScreenKeeper keeper(terminals, signals.Number(), std::move(screens));
    exitCode = RunHost(*line, TokenOptionsFor(*line, tokenUser), &keeper);
    HandedFiles::RemoveUnwritten();
    return exitCode;
}

} // namespace

int main(int argc, char **argv)
{
    base::ProtectProcess();
    base::LockMemory();
    try {
        return Main(argc, argv);
    } catch (const std::bad_alloc &) {
        std::fputs("pba_host: not enough memory\n", stderr);
    } catch (const std::exception &fault) {
        std::cerr << "pba_host: internal fault, please report it: " << base::Printable(fault.what()) << '\n';
    }
    return kExitViewFailed;
}
