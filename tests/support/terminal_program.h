// SPDX-License-Identifier: Apache-2.0
// A program on a terminal of its own, and somebody who sits there.
#pragma once

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <QByteArrayList>
#include <QtGlobal>

class TerminalProgram
{
public:
    // Inherits what is not close-on-exec.
    explicit TerminalProgram(const QByteArrayList &words)
    {
        if (openpty(&m_master, &m_slave, nullptr, nullptr, nullptr) != 0)
            qFatal("no terminal");
        tcgetattr(m_slave, &m_before);
        std::vector<char *> arguments;
        for (const QByteArray &word : words)
            arguments.push_back(const_cast<char *>(word.constData()));
        arguments.push_back(nullptr);
        process = fork();
        if (process == 0) {
            login_tty(dup(m_slave));
            execv(arguments[0], arguments.data());
            _exit(127);
        }
    }
    ~TerminalProgram()
    {
        close(m_master);
        close(m_slave);
    }
    TerminalProgram(const TerminalProgram &) = delete;
    TerminalProgram &operator=(const TerminalProgram &) = delete;

    pid_t process = -1;
    QByteArray seen; // up to what was last expected

    void Expect(const QByteArray &text)
    {
        char bytes[256];
        while (!m_shown.contains(text)) {
            pollfd entry{m_master, POLLIN, 0};
            const ssize_t size = poll(&entry, 1, 60000) == 1 ? read(m_master, bytes, sizeof bytes) : -1;
            if (size <= 0)
                qFatal("not shown: %s, but %s", text.constData(), m_shown.constData());
            m_shown.append(bytes, size);
        }
        const qsizetype end = m_shown.indexOf(text) + text.size();
        seen += m_shown.first(end);
        m_shown.remove(0, end);
    }
    void Type(const QByteArray &line)
    {
        if (write(m_master, line + '\r', line.size() + 1) != line.size() + 1)
            qFatal("nothing can be typed");
    }
    void Answer(const QByteArray &prompt, const QByteArray &line)
    {
        Expect(prompt);
        Type(line);
    }
    // The exit code; the terminal is as it was.
    int End()
    {
        int status = -1;
        waitpid(process, &status, 0);
        termios after{};
        tcgetattr(m_slave, &after);
        const bool same = after.c_lflag == m_before.c_lflag && after.c_iflag == m_before.c_iflag;
        return same && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    int m_master = -1;
    int m_slave = -1;
    termios m_before{};
    QByteArray m_shown;
};
