// pba_host: loads the view module and lets a person open a LUKS2 volume through it.
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>

#include "host/screen/business_logic.h"
#include "host/service/command_line.h"
#include "host/screen/guarded.h"
#include "host/service/last_login.h"
#include "host/log.h"
#include "host/screen/module.h"
#include "pbe/application.h"
#include "pbe/files.h"
#include "pbe/log.h"
#include "volume/interrupted_changes.h"
#include "host/service/stop_signals.h"
#include "volume/luks/mapper_options.h"
#include "base/process_protection.h"
#include "base/text.h"

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

volume::Error OpenVolume(const CommandLine &line, std::unique_ptr<volume::Volume> *opened)
{
    const volume::Error error = volume::Volume::Open(line.volume, opened);
    if (error != volume::Error::None || line.mapperName.empty() || line.testBoot)
        return error;
    return (*opened)->CheckMapperName(line.mapperName);
}

// The view's own result tells less: a view that was stopped answers with a failure too.
int ExitCode(const UnlockSession &unlockSession)
{
    if (unlockSession.HasTestBootEnded())
        return kExitTestBootEnded;
    if (unlockSession.HasStarted())
        return kExitStarted;
    return StopRequested() ? kExitSignal : kExitViewFailed;
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
void FinishPending(volume::Volume *volume)
{
    const volume::Error error = FinishInterruptedChanges(*volume);
    if (error != volume::Error::None)
        Log(kLogErrors, std::string("An interrupted change cannot be finished: ") + volume::Describe(error));
}

std::unique_ptr<StateStore> MakeStateStore(const CommandLine &line, volume::Volume &volume)
{
    if (line.stateInHeader)
        return std::make_unique<HeaderStateStore>(volume);
    return std::make_unique<FileStateStore>();
}

int RunHost(const CommandLine &line, const Module &module, volume::Volume &volume)
{
    const std::unique_ptr<pba::ITranslator, decltype(module.deleteTranslator)> translator(
        module.createTranslator(), module.deleteTranslator);
    const Texts texts(translator.get());
    Clock clock;
    UnlockSession unlockSession(
        volume, clock,
        {line.mapperName, line.testBoot, !line.noPasswordLogin, volume::ActivationFlags(line.mapperOptions)});
    FinishPending(&volume);
    const std::unique_ptr<StateStore> store = MakeStateStore(line, volume);
    LoginThrottle throttle(*store, clock, [&volume] { return volume.GetPolicy(); });
    if (line.stateInHeader && throttle.FormerLogin())
        RestoreLastLogin(*throttle.FormerLogin());
    BusinessLogic logic(unlockSession, throttle, texts,
                        {line.autologonAllowed && volume.GetPolicy().autologonAllowed, line.tokenModule});
    const kro::result_t result = StopRequested() ? kro::kCancelled : RunView(module, &logic);
    const int exitCode = ExitCode(unlockSession);
    if (exitCode == kExitViewFailed) {
        std::cerr << "pba_host: the view ended without a login, with the code 0x" << std::hex
                  << static_cast<std::uint32_t>(result) << "; the log tells more\n";
    }
    return exitCode;
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
    std::unique_ptr<volume::Volume> volume;
    if (const volume::Error error = OpenVolume(*line, &volume); error != volume::Error::None)
        return Refuse(line->volume + ": " + volume::Describe(error),
                      error == volume::Error::NoAccess ? kExitNoAccess : kExitUsage);
    Module module;
    std::string fault;
    if (!module.Load(line->module.empty() ? Module::DefaultPath() : line->module, &fault))
        return Refuse("the view module cannot be loaded: " + fault);
    kro::string_t missing;
    if (const kro::result_t display = PbeCheckDisplay(&missing); kro::Failed(display))
        return Refuse(missing.Data(), display == kro::kAccessDenied ? kExitNoAccess : kExitViewFailed);
    return RunHost(*line, module, *volume);
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
