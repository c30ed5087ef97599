// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/token_list.h"

#include <algorithm>
#include <system_error>
#include <tuple>

#include <sys/eventfd.h>

#include "host/log.h"
#include "host/service/tokens/module_files.h"
#include "host/service/tokens/token_watch.h"

namespace host {

using token::Description;

namespace {

constexpr std::chrono::seconds kPatience{1}; // for the first list
constexpr std::size_t kMaxGenerations = 4;   // that are remembered

// As far as whole characters have room.
std::string Shortened(std::string text, std::size_t maxBytes)
{
    if (text.size() <= maxBytes)
        return text;
    while (maxBytes > 0 && (static_cast<unsigned char>(text[maxBytes]) & 0xC0) == 0x80)
        --maxBytes;
    text.resize(maxBytes);
    return text;
}

// Whether nobody could tell that one is in the other's place, and the PIN would go to the same token.
bool AreAlike(const ModuleToken &a, const ModuleToken &b)
{
    return a.module == b.module && a.token.IsSameAs(b.token) && a.usable == b.usable &&
           a.hasTwin == b.hasTwin && a.token.HasPinPad() == b.token.HasPinPad() &&
           (!a.hasTwin || a.token.Slot() == b.token.Slot());
}

} // namespace

TokenList::TokenList(TokenOptions options)
    : m_options(std::move(options))
    , m_notice(host::Descriptor::Checked(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)))
{
}

TokenList::~TokenList()
{
    const std::lock_guard lock(m_mutex);
    m_ending = true;
}

void TokenList::UseEnrolments(std::vector<token::Enrolment> enrolments)
{
    const std::lock_guard lock(m_mutex);
    m_enrolments = std::move(enrolments);
    if (!m_started && !m_enrolments.empty() && !m_options.program.empty())
        Start();
    else
        Publish();
}

// What cannot be started for want of resources is done without: there are other ways in.
void TokenList::Start()
try {
    m_started = true;
    StartModules();
    m_watch = std::make_unique<TokenWatch>([this] { LookAnew(); });
} catch (const std::system_error &fault) {
    Log(kLogErrors, std::string("Tokens cannot be watched: ") + fault.what());
}

void TokenList::StartModules()
{
    const std::vector<std::string> paths =
        m_options.modules.empty() ? ConfiguredModules() : m_options.modules;
    if (paths.empty())
        Log(kLogErrors, "No PKCS#11 module is configured: there are no tokens.");
    m_modules.reserve(paths.size());
    for (const std::string &path : paths) {
        const std::size_t number = m_modules.size();
        m_modules.emplace_back().process = std::make_unique<TokenModule>(
            path, m_options, [this, number](auto state) { OnAsked(number, std::move(state)); });
    }
}

void TokenList::LookAnew()
{
    for (const Module &module : m_modules)
        module.process->LookAnew();
}

void TokenList::OnAsked(std::size_t module, TokenModule::State state)
{
    const std::lock_guard lock(m_mutex);
    if (m_ending)
        return;
    m_modules[module].state = std::move(state);
    Publish();
}

bool TokenList::HaveAllAnswered() const
{
    return m_started && std::all_of(m_modules.begin(), m_modules.end(),
                                    [](const Module &module) { return module.state.asked; });
}

void TokenList::AwaitFirst()
{
    std::unique_lock lock(m_mutex);
    if (!m_started)
        return;
    m_first.wait_for(lock, kPatience, [this] { return HaveAllAnswered(); });
    m_awaited = true;
    Publish();
}

bool TokenList::IsUsable(const Description &token) const
{
    return !token.IsPinLocked() && std::any_of(m_enrolments.begin(), m_enrolments.end(),
                                               [&](const auto &one) { return token.Matches(one.uri); });
}

// In the order of their names, which does not depend on where they are plugged in: the usable ones first.
std::vector<ModuleToken> TokenList::Tokens() const
{
    std::vector<ModuleToken> tokens;
    for (const Module &module : m_modules) {
        for (const Description &token : module.state.tokens)
            tokens.push_back({module.process.get(), token, IsUsable(token)});
    }
    std::stable_sort(tokens.begin(), tokens.end(), [](const ModuleToken &a, const ModuleToken &b) {
        return std::tuple(!a.usable, a.token.Label(), a.token.Serial()) <
               std::tuple(!b.usable, b.token.Label(), b.token.Serial());
    });
    if (tokens.size() > protocol::kMaxTokens)
        tokens.erase(tokens.begin() + protocol::kMaxTokens, tokens.end());
    for (ModuleToken &token : tokens) {
        token.hasTwin = std::count_if(tokens.begin(), tokens.end(), [&](const ModuleToken &other) {
                            return token.module == other.module && token.token.IsSameAs(other.token);
                        }) > 1;
    }
    return tokens;
}

void TokenList::Publish()
{
    const bool complete = HaveAllAnswered();
    if (!complete && !m_awaited)
        return;
    m_first.notify_all();
    const bool noneLoaded = complete && std::none_of(m_modules.begin(), m_modules.end(),
                                                     [](const auto &module) { return module.state.loaded; });
    if (noneLoaded && !std::exchange(m_noneLoaded, noneLoaded))
        Log(kLogErrors, "No PKCS#11 module can be loaded: there are no tokens.");
    m_noneLoaded = noneLoaded;
    const std::vector<ModuleToken> tokens = Tokens();
    if (m_generations.empty() ||
        !std::equal(tokens.begin(), tokens.end(), m_generations.back().tokens.begin(),
                    m_generations.back().tokens.end(), AreAlike))
        Tell(tokens);
}

void TokenList::Tell(const std::vector<ModuleToken> &tokens)
{
    std::vector<Description> descriptions;
    for (const ModuleToken &token : tokens)
        descriptions.push_back(token.token);
    const std::vector<std::string> names = token::DisplayNames(descriptions);
    m_told = {m_told.generation + 1, {}};
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Description &token = tokens[i].token;
        m_told.tokens.push_back({Shortened(names[i], protocol::kMaxTokenName),
                                 Shortened(token.Serial(), protocol::kMaxTokenSerial), tokens[i].usable,
                                 token.HasPinPad()});
    }
    m_generations.push_back({m_told.generation, tokens});
    if (m_generations.size() > kMaxGenerations)
        m_generations.pop_front();
    eventfd_write(m_notice.Number(), 1);
}

std::optional<protocol::Tokens> TokenList::Take()
{
    eventfd_t count = 0;
    eventfd_read(m_notice.Number(), &count);
    const std::lock_guard lock(m_mutex);
    return m_generations.empty() ? std::nullopt : std::optional(m_told);
}

std::optional<ModuleToken> TokenList::Find(std::uint32_t generation, std::size_t index) const
{
    const std::lock_guard lock(m_mutex);
    const auto list = std::find_if(m_generations.begin(), m_generations.end(),
                                   [&](const Generation &one) { return one.number == generation; });
    if (list == m_generations.end() || index >= list->tokens.size())
        return std::nullopt;
    return list->tokens[index];
}

} // namespace host
