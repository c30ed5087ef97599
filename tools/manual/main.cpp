// SPDX-License-Identifier: Apache-2.0
// pba_manual PAGES OUT VERSION DATE: writes into the directory OUT, made before, the man pages of the
// programs and the completion of their command lines. PAGES holds what these do not tell. Runs while the
// project is built.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "admin/arguments.h"
#include "host/service/command_line.h"
#include "tools/manual/completion.h"
#include "tools/manual/man_page.h"

namespace {

std::string Read(const std::string &path)
{
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file || text.str().empty())
        throw std::runtime_error(path + ": cannot be read");
    return text.str();
}

void Write(const std::string &path, const std::string &text)
{
    std::ofstream file(path);
    if (!(file << text) || !file.flush())
        throw std::runtime_error(path + ": cannot be written");
}

void WriteBoth(const CLI::App &app, const char *const *arguments)
{
    const std::string &name = app.get_name();
    const std::string rest = Read(std::string(arguments[1]) + "/" + name + ".man");
    Write(std::string(arguments[2]) + "/" + name + ".8",
          manual::ManPage(app, {arguments[3], arguments[4]}, rest));
    Write(std::string(arguments[2]) + "/" + name, manual::BashCompletion(app));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5) {
        std::fputs("usage: pba_manual PAGES OUT VERSION DATE\n", stderr);
        return 2;
    }
    try {
        CLI::App adminsApp;
        admin::Arguments adminsArguments;
        admin::Describe(&adminsApp, &adminsArguments);
        WriteBoth(adminsApp, argv);
        CLI::App hostsApp;
        host::CommandLine hostsLine;
        host::Describe(&hostsApp, &hostsLine);
        WriteBoth(hostsApp, argv);
        return 0;
    } catch (const std::exception &fault) {
        std::cerr << "pba_manual: " << fault.what() << '\n';
        return 1;
    }
}
