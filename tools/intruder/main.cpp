// SPDX-License-Identifier: Apache-2.0
// intruder: what somebody would try who has taken over a screen. Behind the walls of a screen, each step must
// be refused; the exit code is the number of steps that were not, at most 100. With --free there are no
// walls, which shows that the steps work: then the exit code is the number of those that were refused.
//
//   intruder [--free] [--required] [--terminal] --user USER --root ROOT --volume VOLUME
//
// Whatever a step opens it closes, and what it changes it changes in ROOT/pba/intruder.txt, which must exist.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/intruder/steps.h"

#include "host/screen/confinement.h"

namespace {

struct Options
{
    bool free = false;
    bool required = false;
    bool terminal = false;
    std::string user;
    std::string root;
    std::string volume;
};

bool Parse(int argc, char **argv, Options *options)
{
    const std::pair<const char *, std::string *> values[] = {
        {"--user", &options->user}, {"--root", &options->root}, {"--volume", &options->volume}};
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--free") == 0)
            options->free = true;
        else if (std::strcmp(argv[i], "--required") == 0)
            options->required = true;
        else if (std::strcmp(argv[i], "--terminal") == 0)
            options->terminal = true;
        for (const auto &[name, value] : values) {
            if (std::strcmp(argv[i], name) == 0 && i + 1 < argc)
                *value = argv[++i];
        }
    }
    return !options->root.empty() && !options->volume.empty();
}

bool Enclose(const Options &options)
{
    host::Confinement confinement = options.terminal ? host::ForTerminal(options.root)
                                                     : host::ForScreen(options.root, options.root, false);
    confinement.user = options.user;
    confinement.landlockRequired = options.required;
    std::string fault;
    if (host::Confine(confinement, &fault))
        return true;
    std::fprintf(stderr, "intruder: %s\n", fault.c_str());
    return false;
}

// Not permitted is a refusal; anything else, another failure too, went past the walls.
int CountWrong(const std::vector<intruder::Step> &steps, bool free)
{
    int wrong = 0;
    for (const intruder::Step &step : steps) {
        errno = 0;
        const bool done = step.attempt();
        const bool refused = !done && (errno == EPERM || errno == EACCES || errno == ENOSYS);
        std::printf("%-28s %s\n", step.name, refused ? "refused" : "ALLOWED");
        std::fflush(stdout);
        wrong += refused == free;
    }
    return wrong;
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int kUsage = 102;
    constexpr int kNotEnclosed = 101;
    if (argc == 2 && std::strcmp(argv[1], intruder::kExecuted) == 0)
        return intruder::kExecutedCode;
    Options options;
    if (!Parse(argc, argv, &options)) {
        std::fputs(
            "usage: intruder [--free] [--required] [--terminal] --user USER --root ROOT --volume VOLUME\n",
            stderr);
        return kUsage;
    }
    // Opened before, and not closed: as if somebody had forgotten it.
    intruder::LeaveOpen(options.volume);
    if (!options.free && !Enclose(options))
        return kNotEnclosed;
    const int wrong = CountWrong(intruder::Steps(options.root, options.volume), options.free);
    return wrong < 100 ? wrong : 100;
}
