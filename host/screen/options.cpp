// SPDX-License-Identifier: Apache-2.0
#include "host/screen/options.h"

#include <charconv>

#include <getopt.h>

namespace host {
namespace {

constexpr option kOptions[] = {
    {"channel", required_argument, nullptr, 'c'},
    {"file", required_argument, nullptr, 'f'},
    {"log", required_argument, nullptr, 'l'},
    {"log-severity", required_argument, nullptr, 's'},
    {"module", required_argument, nullptr, 'm'},
    {"require-landlock", no_argument, nullptr, 'k'},
    {"root", required_argument, nullptr, 'r'},
    {"user", required_argument, nullptr, 'u'},
    {},
};

template <typename Number>
bool Read(std::string_view text, Number *number)
{
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
    return error == std::errc() && rest == text.data() + text.size();
}

bool ReadFile(std::string_view text, ScreenOptions *options)
{
    const std::size_t mark = text.rfind('=');
    int descriptor = -1;
    if (mark == std::string_view::npos || !Read(text.substr(mark + 1), &descriptor))
        return false;
    options->files.emplace_back(text.substr(0, mark), descriptor);
    return true;
}

bool Take(int option, const char *value, ScreenOptions *options)
{
    switch (option) {
    case 'c':
        return Read(value, &options->channel);
    case 'r':
        options->root = value;
        return true;
    case 'u':
        options->user = value;
        return true;
    case 'm':
        options->module = value;
        return true;
    case 'l':
        return Read(value, &options->log);
    case 's':
        return Read(value, &options->logSeverity.emplace());
    case 'k':
        options->landlockRequired = true;
        return true;
    case 'f':
        return ReadFile(value, options);
    default:
        return false;
    }
}

} // namespace

std::vector<int> ScreenOptions::Descriptors() const
{
    std::vector<int> descriptors{channel};
    if (log >= 0)
        descriptors.push_back(log);
    for (const auto &[name, descriptor] : files)
        descriptors.push_back(descriptor);
    return descriptors;
}

std::optional<ScreenOptions> ParseScreenOptions(int argc, char **argv)
{
    ScreenOptions options;
    opterr = 0;
    for (int option = 0; (option = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
        if (!Take(option, optarg, &options))
            return std::nullopt;
    }
    if (optind != argc || options.channel < 0 || options.root.empty())
        return std::nullopt;
    return options;
}

} // namespace host
