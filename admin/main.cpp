// SPDX-License-Identifier: Apache-2.0
// pba_admin: prepares volumes, users, tokens, settings and recovery for the view's host.
#include <cstdio>
#include <iostream>
#include <new>

#include "admin/arguments.h"
#include "admin/command_line.h"
#include "admin/failure.h"
#include "base/process_protection.h"
#include "base/text.h"

namespace {

using namespace admin;

int Report(const std::vector<std::string> &lines, int exitCode)
{
    for (const std::string &line : lines)
        std::cerr << "pba_admin: " << base::Printable(line) << '\n';
    return exitCode;
}

int Main(int argc, char **argv)
{
    Arguments arguments;
    CLI::App app;
    Describe(&app, &arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &request) {
        app.exit(request);
    } catch (const CLI::ParseError &fault) {
        throw Failure(Explain(app, fault), kExitUsage);
    }
    if (!std::cout.flush())
        throw Failure("standard output: cannot be written");
    return 0;
}

int RunCommand(int argc, char **argv)
{
    try {
        return Main(argc, argv);
    } catch (const Failure &failure) {
        return Report(failure.Lines(), failure.ExitCode());
    }
}

} // namespace

int main(int argc, char **argv)
{
    base::ProtectProcess();
    try {
        return RunCommand(argc, argv);
    } catch (const std::bad_alloc &) { // also from telling another failure
        std::fputs("pba_admin: not enough memory\n", stderr);
        return kExitFailed;
    } catch (const std::exception &fault) {
        return Report({std::string("internal fault, please report it: ") + fault.what()}, kExitFailed);
    }
}
