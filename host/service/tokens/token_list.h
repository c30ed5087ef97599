// SPDX-License-Identifier: Apache-2.0
// The tokens that are connected, as the screen is told of them. There are no processes before the volume
// knows a token.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

#include "host/protocol/messages.h"
#include "host/service/tokens/token_module.h"
#include "volume/token/enrolment.h"

namespace host {

class TokenWatch;

// A token, and the module that knows it.
struct ModuleToken
{
    TokenModule *module;
    token::Description token;
    bool usable = false;  // the volume knows it, and its PIN is not locked
    bool hasTwin = false; // in the list, which tells the same of itself: they are told apart by their slot
};

class TokenList
{
public:
    // Throws std::system_error.
    explicit TokenList(TokenOptions options);
    ~TokenList();
    TokenList(const TokenList &) = delete;
    TokenList &operator=(const TokenList &) = delete;

    // What the volume knows of tokens; with the first of it the modules are started.
    void UseEnrolments(std::vector<token::Enrolment> enrolments);
    // As long as a person does; from then on there is a list, if only of the modules that have answered.
    void AwaitFirst();

    // Readable when there is a newer list than the one taken last.
    int Descriptor() const { return m_notice.Number(); }
    // The newest list, if there is any yet. Any thread may call it.
    std::optional<protocol::Tokens> Take();
    // Asks all modules anew.
    void LookAnew();

    // What stood at a place of a list, as far as it is remembered.
    std::optional<ModuleToken> Find(std::uint32_t generation, std::size_t index) const;

private:
    struct Module
    {
        TokenModule::State state;
        std::unique_ptr<TokenModule> process;
    };
    struct Generation
    {
        std::uint32_t number;
        std::vector<ModuleToken> tokens;
    };

    void Start();
    void StartModules();
    void OnAsked(std::size_t module, TokenModule::State state);
    bool HaveAllAnswered() const;
    bool IsUsable(const token::Description &token) const;
    std::vector<ModuleToken> Tokens() const;
    // The caller holds the mutex.
    void Publish();
    void Tell(const std::vector<ModuleToken> &tokens);

    const TokenOptions m_options;
    const host::Descriptor m_notice;
    mutable std::mutex m_mutex; // of all that follows, save what is set at the start for good
    std::condition_variable m_first;
    std::vector<token::Enrolment> m_enrolments;
    protocol::Tokens m_told;
    std::deque<Generation> m_generations; // the newest one last
    std::vector<Module> m_modules;
    bool m_started = false;
    bool m_awaited = false; // long enough
    bool m_noneLoaded = false;
    bool m_ending = false;
    std::unique_ptr<TokenWatch> m_watch;
};

} // namespace host
