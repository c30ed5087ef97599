// SPDX-License-Identifier: Apache-2.0
#include "host/service/command_line.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <string_view>

#include <CLI/CLI.hpp>

#include "base/text.h"
#include "host/service/exit_codes.h"

namespace host {
namespace {

constexpr char kFooter[] = R"(
Exit codes:
  0  the operating system was started; with --mapper-name the volume is active
  1  the view failed, or there is no display or terminal to show it on
  2  wrong usage, or a volume that cannot be used
  3  ended by a signal
  4  the test boot ended
  5  access to the volume or to the framebuffer is denied

Example:
  pba_host --root / --volume /dev/sda3 --mapper-name cryptroot)";

// The kernel's limit, and no name that would leave /dev/mapper.
std::string CheckMapperName(const std::string &name)
{
    constexpr std::size_t kMaxLength = 127;
    const bool plain = std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return std::isalnum(c) ||
               std::string_view("#+-.:=@_").find(static_cast<char>(c)) != std::string_view::npos;
    });
    if (plain && !name.empty() && name.size() <= kMaxLength && name != "." && name != ".." &&
        name != "control")
        return {};
    return "a mapper name has 1 to 127 letters, digits and #+-.:=@_";
}

std::string CheckNotEmpty(const std::string &value)
{
    return value.empty() ? "must not be empty" : "";
}

void AddOptions(CLI::App *app, CommandLine *line)
{
    // Where a script hands on further arguments, the later one wins.
    app->option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app->add_option("--root", line->root, "Directory that holds pba/settings.bin and the view's other files")
        ->required()
        ->check(CLI::ExistingDirectory);
    app->add_option("--volume", line->volume, "LUKS2 volume, a device or a file")
        ->type_name("FILE")
        ->required()
        ->check(CheckNotEmpty);
    app->add_option("--mapper-name", line->mapperName, "Map the opened volume under this name")
        ->check(CheckMapperName);
    app->add_option("--mapper-options", line->mapperOptions,
                    "Options of the mapping, as the fourth field of /etc/crypttab has them")
        ->needs("--mapper-name");
    app->add_option("--log", line->log, "Append the log to this file (default: PBE_LOG, else standard error)")
        ->type_name("FILE");
    app->add_option("--log-severity", line->logSeverity, "300 errors, 700 calls, 900 details");
    app->add_option("--module", line->module,
                    "The view module (default: beside this program, else installed)")
        ->type_name("FILE");
    app->add_option_function<std::string>(
           "--state", [line](const std::string &place) { line->stateInHeader = place == "header"; },
           "Where failed logins are counted: root (ROOT/pba/state.json), or header, for a root that does "
           "not last: in the volume's header, the last user and domain too")
        ->type_name("")
        ->check(CLI::IsMember({"root", "header"}));
    app->add_option("--pkcs11-module", line->tokenModule,
                    "PKCS#11 module for tokens (default: all that p11-kit's configuration names)")
        ->type_name("FILE")
        ->check(CheckNotEmpty);
    app->add_option("--token-timeout", line->tokenTimeout,
                    "Seconds that a token, and whoever types its PIN at the reader, may take for an answer")
        ->check(CLI::Range(1, 3600))
        ->capture_default_str();
    app->add_option("--token-user", line->tokenUser,
                    "Whom PKCS#11 modules run as, when root starts them: a name, or UID:GID,GID... (default: "
                    "pba-token, where there is such a user, else 65533:65533)")
        ->check(CheckNotEmpty);
    app->add_flag("--test-boot", line->testBoot, "Show the test-boot page instead of a login");
    app->add_flag("--allow-autologon", line->autologonAllowed, "Allow one automatic logon");
    app->add_flag("--no-password-login", line->noPasswordLogin, "Offer no login by password");
    app->add_flag("--text", line->text,
                  "Ask line by line at the terminal of standard input, without a display");
    app->add_option("--screen-user", line->screenUser,
                    "Whom the screen runs as, when root starts it: a name, or UID:GID,GID... (default: "
                    "pba-screen, where there is such a user, else 65534:65534)")
        ->check(CheckNotEmpty);
    app->add_flag("--require-landlock", line->landlockRequired,
                  "Let no screen stand where the kernel cannot keep it to its files");
}

} // namespace

void Describe(CLI::App *app, CommandLine *line)
{
    app->name("pba_host");
    app->description("Pre-boot authentication: a login opens a LUKS2 volume.");
    app->set_version_flag("--version", "pba_host " PBA_VERSION);
    app->set_help_flag("--help", "Print this help and exit");
    app->footer(kFooter);
    AddOptions(app, line);
}

std::optional<CommandLine> ParseCommandLine(int argc, char **argv, int *exitCode)
{
    CommandLine line;
    CLI::App app;
    Describe(&app, &line);
    try {
        app.parse(argc, argv);
        return line;
    } catch (const CLI::Success &request) {
        *exitCode = app.exit(request);
    } catch (const CLI::ParseError &fault) {
        std::cerr << "pba_host: " << base::Printable(fault.what()) << "; see pba_host --help\n";
        *exitCode = kExitUsage;
    }
    return std::nullopt;
}

} // namespace host
