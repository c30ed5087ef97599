// SPDX-License-Identifier: Apache-2.0
// Where the host's memory is kept.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "host/service/login_state.h"
#include "volume/luks/header.h"

namespace host {

class StateStore
{
public:
    virtual ~StateStore() = default;

    // What cannot be read is as if nothing had ever happened: a damaged memory locks nobody out.
    virtual LoginState Read() = 0;
    // Makes of what is stored what is to be stored; nothing when that may stay. May be called in vain.
    using Change = std::function<std::optional<LoginState>(const LoginState &stored)>;
    // False when it stays as it was against the will of `change`. It is never half written. Another program
    // that is changing it is waited for, but not for longer than `patience`.
    virtual bool Update(const Change &change, std::chrono::milliseconds patience) = 0;
    // Whether the last user and domain belong here. Else the view's own files last, and serve.
    virtual bool KeepsLastLogin() const = 0;
};

// ROOT/pba/state.json; the directory is made when it is missing.
class FileStateStore final : public StateStore
{
public:
    LoginState Read() override;
    bool Update(const Change &change, std::chrono::milliseconds patience) override;
    bool KeepsLastLogin() const override { return false; }
};

// A token object in the volume's header, for a root that is made anew at each start. Programs that count at
// the same time do it one after the other.
class HeaderStateStore final : public StateStore
{
public:
    explicit HeaderStateStore(volume::Header &header)
        : m_header(header)
    {
    }

    LoginState Read() override;
    bool Update(const Change &change, std::chrono::milliseconds patience) override;
    bool KeepsLastLogin() const override { return true; }

private:
    volume::Error WriteObject(const std::optional<LoginState> &state);

    volume::Header &m_header;
};

} // namespace host
