// SPDX-License-Identifier: Apache-2.0
// One piece of work at a time, in a thread of its own, for a thread that has to listen meanwhile.
#pragma once

#include <future>
#include <utility>

#include <sys/eventfd.h>

#include "host/service/descriptor.h"

namespace host {

class Worker
{
public:
    Worker() = default;

    bool IsBusy() const { return m_work.valid(); }
    // Readable when the work is done; nobody is busy any more when Finish has been called then.
    int Done() const { return m_done.Number(); }

    template <typename Work>
    void Begin(Work work)
    {
        m_work = std::async(std::launch::async, [this, work = std::move(work)]() mutable {
            const Announcement announcement{m_done.Number()};
            work();
        });
    }
    // Throws what the work has thrown.
    void Finish()
    {
        eventfd_t count = 0;
        eventfd_read(m_done.Number(), &count);
        m_work.get();
    }

private:
    struct Announcement
    {
        int descriptor;
        ~Announcement() { eventfd_write(descriptor, 1); }
    };

    Descriptor m_done = Descriptor::Checked(eventfd(0, EFD_CLOEXEC));
    std::future<void> m_work; // ends before the descriptor does
};

} // namespace host
