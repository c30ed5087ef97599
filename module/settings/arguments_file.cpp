// SPDX-License-Identifier: Apache-2.0
#include "module/settings/arguments_file.h"

#include <exception>
#include <sstream>
#include <stdexcept>

#include <boost/program_options/options_description.hpp>
#include <boost/program_options/parsers.hpp>

#include "module/settings/pba_file.h"
#include "module/trace/trace.h"

namespace fde::boot {

namespace {

namespace options = boost::program_options;

constexpr char kFunction[] = "fde::boot::ReadPbaArguments";
constexpr char kSeparator[] = "######################################"
                              "######################################";
static_assert(sizeof(kSeparator) == 76 + 1);

options::options_description KnownOptions()
{
    options::options_description known(80, 40);
    known.add_options()(kTestModeOption, options::value<bool>(), "turn on PBA test mode");
    return known;
}

// Empty when the file cannot be opened; throws when it is too large, which no arguments are.
std::string ReadContent(const char16_t *path)
{
    QFile file;
    const kro::result_t result = pba::OpenPbaFile(file, QString::fromUtf16(path), QIODevice::ReadOnly);
    if (result == kro::kBufferTooSmall)
        throw std::length_error("the file is larger than 4 MiB");
    if (kro::Failed(result))
        return std::string();
    return file.readAll().toStdString();
}

void TraceSeparator()
{
    pba::TraceEmptyLine();
    pba::TraceMessage(pba::kTraceError) << kSeparator;
    pba::TraceEmptyLine();
}

kro::result_t ReportInvalidFile(const std::exception &failure)
{
    TraceSeparator();
    pba::TraceError(kFunction, __LINE__, kro::kInvalidArgument)
        << "Invalid PBA config file. Error: " << failure.what();
    TraceSeparator();
    return kro::kInvalidArgument;
}

} // namespace

kro::result_t ReadPbaArguments(const char16_t *path, options::variables_map &arguments)
{
    try {
        const options::options_description known = KnownOptions();
        std::istringstream stream(ReadContent(path));
        options::store(options::parse_config_file(stream, known), arguments);
        options::notify(arguments);
        return kro::kOk;
    } catch (const std::exception &failure) {
        return ReportInvalidFile(failure);
    }
}

} // namespace fde::boot
