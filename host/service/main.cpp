// SPDX-License-Identifier: Apache-2.0
// pba_host: lets a person open a LUKS2 volume, through the view module or, at a terminal, through pba_text.
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>

#include <unistd.h>

#include "base/process_protection.h"
#include "base/text.h"
#include "host/log.h"
#include "host/screen/business_logic.h"
#include "host/screen/guarded.h"
#include "host/screen/identity.h"
#include "host/screen/module.h"
#include "host/service/command_line.h"
#include "host/service/last_login.h"
#include "host/service/screen_keeper.h"
#include "host/service/service.h"
#include "host/service/stop_signals.h"
#include "pbe/application.h"
#include "pbe/files.h"
#include "pbe/log.h"
#include "volume/interrupted_changes.h"
#include "volume/luks/activation.h"
#include "volume/luks/mapper_options.h"
#include "volume/luks/policy.h"

namespace {

using namespace host;

int Refuse(const std::string &what, int exitCode = kExitUsage)
{
    std::cerr << "pba_host: " << base::Printable(what) << '\n';
    return exitCode;
}

// Before the module is loaded: its first log lines are written while it loads.
bool PreparePlatform(const CommandLine &line)
{
    PbeSetFileRoot(line.root.c_str());
    if (line.logSeverity)
        PbeSetLogSeverity(*line.logSeverity);
    return line.log.empty() || !kro::Failed(PbeSetLogFile(line.log.c_str()));
}

volume::Error OpenVolume(const CommandLine &line, std::unique_ptr<volume::Header> *opened)
{
    const volume::Error error = volume::Header::Open(line.volume, opened);
    if (error != volume::Error::None || line.mapperName.empty() || line.testBoot)
        return error;
    return volume::CheckMapperName(**opened, line.mapperName);
}

// The view's own result tells less: a view that was stopped answers with a failure too.
int ExitCode(const UnlockSession &unlockSession, bool stopped)
{
    if (unlockSession.HasTestBootEnded())
        return kExitTestBootEnded;
    if (unlockSession.HasStarted())
        return kExitStarted;
    return stopped ? kExitSignal : kExitViewFailed;
}

kro::result_t RunView(const Module &module, BusinessLogic *logic)
{
    const std::unique_ptr<pba::IMainView, decltype(module.deleteMainView)> view(module.createMainView(),
                                                                                module.deleteMainView);
    if (!view)
        return kro::kOutOfMemory;
    view->SetBusinessLogic(logic);
    return Guarded([&] { return view->Run(); });
}

// The volume's header is whole before anybody logs on. Where it cannot be written that has to wait.
void FinishPending(volume::Header *header)
{
    const volume::Error error = FinishInterruptedChanges(*header);
    if (error != volume::Error::None)
        Log(kLogErrors, std::string("An interrupted change cannot be finished: ") + volume::Describe(error));
}

std::unique_ptr<StateStore> MakeStateStore(const CommandLine &line, volume::Header &header)
{
    if (line.stateInHeader)
        return std::make_unique<HeaderStateStore>(header);
    return std::make_unique<FileStateStore>();
}

// What decides, whichever screen asks. Members in the order in which they depend on each other.
struct Deciders
{
    Deciders(const CommandLine &line, volume::Header &header)
        : unlockSession(header, clock,
                        {line.mapperName, line.testBoot, !line.noPasswordLogin,
                         volume::ActivationFlags(line.mapperOptions)})
        , store(MakeStateStore(line, header))
        , throttle(*store, clock, [&header] { return volume::PolicyOf(header); })
        , autologonAllowed(line.autologonAllowed && volume::PolicyOf(header).autologonAllowed)
    {
    }

    Clock clock;
    UnlockSession unlockSession;
    std::unique_ptr<StateStore> store;
    LoginThrottle throttle;
    bool autologonAllowed;
};

int RunHost(const CommandLine &line, const Module &module, volume::Header &header)
{
    const std::unique_ptr<pba::ITranslator, decltype(module.deleteTranslator)> translator(
        module.createTranslator(), module.deleteTranslator);
    const Texts texts(translator.get());
    FinishPending(&header);
    Deciders deciders(line, header);
    if (line.stateInHeader && deciders.throttle.FormerLogin())
        RestoreLastLogin(*deciders.throttle.FormerLogin());
    BusinessLogic logic(deciders.unlockSession, deciders.throttle, texts,
                        {deciders.autologonAllowed, line.tokenModule});
    const kro::result_t result = StopRequested() ? kro::kCancelled : RunView(module, &logic);
    const int exitCode = ExitCode(deciders.unlockSession, StopRequested());
    if (exitCode == kExitViewFailed) {
        std::cerr << "pba_host: the view ended without a login, with the code 0x" << std::hex
                  << static_cast<std::uint32_t>(result) << "; the log tells more\n";
    }
    return exitCode;
}

// Beside this program.
std::string TextScreenPath()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).replace_filename("pba_text");
}

int RunText(const CommandLine &line, const std::optional<Identity> &identity, volume::Header &header)
{
    const TerminalSettings terminal;
    if (!terminal.IsTerminal())
        return Refuse("standard input is no terminal; start --text at one", kExitViewFailed);
    FinishPending(&header);
    Deciders deciders(line, header);
    Service service(deciders.unlockSession, deciders.throttle, deciders.autologonAllowed);
    ScreenKeeper keeper(service, terminal, {TextScreenPath(), {"--root", line.root}, identity});
    keeper.Run();
    const int exitCode = ExitCode(deciders.unlockSession, keeper.IsStopped());
    return exitCode == kExitViewFailed
               ? Refuse("the screen has ended too often, the last time " + keeper.WhyGivenUp(), exitCode)
               : exitCode;
}

int ShowView(const CommandLine &line, volume::Header &header)
{
    Module module;
    std::string fault;
    if (!module.Load(line.module.empty() ? Module::DefaultPath() : line.module, &fault))
        return Refuse("the view module cannot be loaded: " + fault);
    kro::string_t missing;
    if (const kro::result_t display = PbeCheckDisplay(&missing); kro::Failed(display))
        return Refuse(missing.Data(), display == kro::kAccessDenied ? kExitNoAccess : kExitViewFailed);
    return RunHost(line, module, header);
}

// What is wrong with --screen-user; empty when nothing is.
std::string FindScreenUser(const std::string &user, std::optional<Identity> *identity)
{
    if (user.empty())
        return {};
    if (geteuid() != 0)
        return "--screen-user: only root can start the screen as another user";
    *identity = FindIdentity(user);
    return *identity ? "" : "--screen-user " + user + ": not known, or root's in part; name an ordinary user";
}

int Main(int argc, char **argv)
{
    int exitCode = 0;
    const std::optional<CommandLine> line = ParseCommandLine(argc, argv, &exitCode);
    if (!line)
        return exitCode;
    InstallStopSignals();
    if (!PreparePlatform(*line))
        return Refuse(line->log + ": cannot be written; give --log another file");
    std::optional<Identity> screenUser;
    if (const std::string fault = FindScreenUser(line->screenUser, &screenUser); !fault.empty())
        return Refuse(fault);
    std::unique_ptr<volume::Header> header;
    if (const volume::Error error = OpenVolume(*line, &header); error != volume::Error::None)
        return Refuse(line->volume + ": " + volume::Describe(error),
                      error == volume::Error::NoAccess ? kExitNoAccess : kExitUsage);
    return line->text ? RunText(*line, screenUser, *header) : ShowView(*line, *header);
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
