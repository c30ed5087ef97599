// Where the host's memory is kept.
#pragma once

#include "host/service/login_state.h"
#include "volume/luks/volume.h"

namespace host {

class StateStore
{
public:
    virtual ~StateStore() = default;

    // What cannot be read is as if nothing had ever happened: a damaged memory locks nobody out.
    virtual LoginState Read() = 0;
    // False when it stays as it was. It is never half written.
    virtual bool Write(const LoginState &state) = 0;
    // Whether the last user and domain belong here. Else the view's own files last, and serve.
    virtual bool KeepsLastLogin() const = 0;
};

// ROOT/pba/state.json; the directory is made when it is missing.
class FileStateStore final : public StateStore
{
public:
    LoginState Read() override;
    bool Write(const LoginState &state) override;
    bool KeepsLastLogin() const override { return false; }
};

// A token object in the volume's header, for a root that is made anew at each start.
class HeaderStateStore final : public StateStore
{
public:
    explicit HeaderStateStore(volume::Volume &volume)
        : m_volume(volume)
    {
    }

    LoginState Read() override;
    bool Write(const LoginState &state) override;
    bool KeepsLastLogin() const override { return true; }

private:
    volume::Volume &m_volume;
};

} // namespace host
