// SPDX-License-Identifier: Apache-2.0
// pba_screen: shows the view, and asks pba_host, which has started it, for everything that is decided. It has
// no rights but to paint, to hear keys and to ask.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>

#include <unistd.h>

#include "base/process_protection.h"
#include "base/text.h"
#include "host/log.h"
#include "host/protocol/socket_channel.h"
#include "host/screen/business_logic.h"
#include "host/screen/confinement.h"
#include "host/screen/display_cookie.h"
#include "host/screen/exit_codes.h"
#include "host/screen/guarded.h"
#include "host/screen/module.h"
#include "host/screen/options.h"
#include "pbe/application.h"
#include "pbe/files.h"
#include "pbe/log.h"

namespace {

using namespace host;

// In the name of the program that the person has started.
int Refuse(const std::string &what, int exitCode)
{
    std::cerr << "pba_host: " << base::Printable(what) << '\n';
    return exitCode;
}

// Before the module is loaded: its first log lines are written while it loads.
void PreparePlatform(const ScreenOptions &options)
{
    PbeSetFileRoot(options.root.c_str());
    if (options.logSeverity)
        PbeSetLogSeverity(*options.logSeverity);
    if (options.log >= 0)
        PbeSetLogDescriptor(options.log);
    for (const auto &[name, descriptor] : options.files)
        PbeUseFile((u"\\pba\\" + base::ToUtf16(name)).c_str(), descriptor);
    PbeShowWaitSign(true);
}

bool IsOnDisplayServer()
{
    const char *platform = std::getenv("QT_QPA_PLATFORM");
    const std::string name = platform ? platform : "";
    return name.empty() || name.starts_with("xcb") || name.starts_with("wayland");
}

std::string ProgramsDirectory()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

bool PutUpWalls(const ScreenOptions &options, std::string *fault)
{
    const bool onServer = IsOnDisplayServer();
    if (onServer)
        KeepDisplayCookie();
    Confinement confinement = ForScreen(options.root, ProgramsDirectory(), onServer);
    confinement.user = options.user;
    confinement.landlockRequired = options.landlockRequired;
    confinement.descriptors = options.Descriptors();
    return Confine(confinement, fault);
}

void NoteWhatIsOutOfReach(const std::string &root)
{
    const std::string directory = root + "/pba";
    if (access(directory.c_str(), R_OK | X_OK) != 0 && errno == EACCES)
        Log(kLogErrors, directory + " cannot be read by the screen's user: no help and no translations.");
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

int ExitCode(kro::result_t result, bool done)
{
    if (done)
        return kScreenDone;
    char line[128];
    std::snprintf(line, sizeof line, "the view ended without a login, with the code 0x%x; the log tells more",
                  static_cast<unsigned>(result));
    Log(kLogErrors, line);
    return kro::Failed(result) ? kScreenFailed : Refuse(line, kScreenClosed);
}

int Show(const ScreenOptions &options, const Module &module)
{
    const std::unique_ptr<pba::ITranslator, decltype(module.deleteTranslator)> translator(
        module.createTranslator(), module.deleteTranslator);
    const Texts texts(translator.get());
    protocol::Client client(std::make_unique<protocol::SocketChannel>(options.channel), PbeAwait);
    ServiceLink service(client);
    BusinessLogic logic(service, texts);
    service.Listen();
    const kro::result_t result = RunView(module, &logic);
    return ExitCode(result, logic.HasStarted() || service.HasEnded());
}

int Main(int argc, char **argv)
{
    const std::optional<ScreenOptions> options = ParseScreenOptions(argc, argv);
    if (!options || !protocol::SocketChannel::IsUsable(options->channel))
        return Refuse("pba_screen is started by pba_host", kScreenUsage);
    PreparePlatform(*options);
    Module module;
    std::string fault;
    if (!module.Load(options->module.empty() ? Module::DefaultPath() : options->module, &fault))
        return Refuse("the view module cannot be loaded: " + fault, kScreenUsage);
    if (!PutUpWalls(*options, &fault))
        return Refuse(fault, kScreenCannotStand);
    base::LockMemory();
    NoteWhatIsOutOfReach(options->root);
    kro::string_t missing;
    if (const kro::result_t display = PbeCheckDisplay(&missing); kro::Failed(display))
        return Refuse(missing.Data(), display == kro::kAccessDenied ? kScreenNoAccess : kScreenCannotStand);
    return Show(*options, module);
}

} // namespace

// Signals of the terminal are for pba_host, which passes the end on.
int main(int argc, char **argv)
{
    base::ProtectProcess();
    for (const int signal : {SIGINT, SIGHUP, SIGPIPE})
        std::signal(signal, SIG_IGN);
    try {
        return Main(argc, argv);
    } catch (const std::bad_alloc &) {
        std::fputs("pba_host: not enough memory\n", stderr);
    } catch (const std::exception &fault) {
        Refuse(std::string("internal fault, please report it: ") + fault.what(), kScreenFailed);
    }
    return kScreenFailed;
}
