// SPDX-License-Identifier: Apache-2.0
// The longest time for which the sign of a wait stands still while another process derives a key, as the
// service does: argon2id with 1 GiB in four threads, on the computer's own cores.
//   bench_wait_sign DIRECTORY-FOR-A-VOLUME
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <libcryptsetup.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimer>

#include "pbe/application.h"

namespace {

using namespace std::chrono_literals;

constexpr auto kWait = 5s;
constexpr long kVolumeSize = 32L << 20;
constexpr qint64 kTarget = 100; // milliseconds

[[noreturn]] void Fail(const char *what)
{
    std::fprintf(stderr, "bench_wait_sign: %s\n", what);
    _exit(EXIT_FAILURE);
}

crypt_pbkdf_type Derivation()
{
    crypt_pbkdf_type derivation{};
    derivation.type = CRYPT_KDF_ARGON2ID;
    derivation.hash = "sha256";
    derivation.iterations = 4;
    derivation.max_memory_kb = 1 << 20;
    derivation.parallel_threads = 4;
    derivation.flags = CRYPT_PBKDF_NO_BENCHMARK;
    return derivation;
}

// Until it is killed. Says once that it begins.
[[noreturn]] void Derive(const std::string &volume, int said)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    crypt_device *device = nullptr;
    const crypt_pbkdf_type derivation = Derivation();
    if (crypt_init(&device, volume.c_str()) != 0 || crypt_set_pbkdf_type(device, &derivation) != 0 ||
        crypt_format(device, CRYPT_LUKS2, "aes", "xts-plain64", nullptr, nullptr, 64, nullptr) != 0)
        Fail("no volume could be made");
    if (write(said, "x", 1) != 1)
        Fail("nobody listens");
    for (;;) {
        const int slot = crypt_keyslot_add_by_volume_key(device, CRYPT_ANY_SLOT, nullptr, 0, "bench", 5);
        if (slot < 0 || crypt_keyslot_destroy(device, slot) != 0)
            Fail("no key could be derived");
    }
}

class Watch : public QObject
{
public:
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && receiver->objectName() == u"waitSign")
            Note();
        return false;
    }
    void Note()
    {
        if (m_paints++ > 0)
            m_longest = std::max(m_longest, m_sinceLast.elapsed());
        m_sinceLast.start();
    }
    int Paints() const { return m_paints; }
    qint64 Longest() const { return m_longest; }

private:
    QElapsedTimer m_sinceLast;
    int m_paints = 0;
    qint64 m_longest = 0;
};

// The end of the wait counts as a paint.
void Measure(pid_t deriving)
{
    int answer[2];
    if (pipe(answer) != 0)
        Fail("no pipe");
    Watch watch;
    qApp->installEventFilter(&watch);
    PbeShowWaitSign(true);
    std::thread service([&] {
        std::this_thread::sleep_for(kWait);
        close(answer[1]);
    });
    PbeAwait(answer[0]);
    watch.Note();
    service.join();
    if (watch.Paints() < 3 || waitpid(deriving, nullptr, WNOHANG) != 0)
        Fail("there was no sign, or no derivation beside it");
    std::printf("| Longest stand of the sign in a 5 s derivation, %s | %lld ms | | | | at most %lld ms |\n",
                qPrintable(QGuiApplication::platformName()), watch.Longest(), kTarget);
}

} // namespace

int main(int argc, char **argv)
{
    int said[2];
    if (argc < 2 || pipe(said) != 0)
        Fail("usage: bench_wait_sign DIRECTORY");
    const std::string volume = std::string(argv[1]) + "/wait_sign.img";
    std::FILE *file = std::fopen(volume.c_str(), "w");
    if (!file || ftruncate(fileno(file), kVolumeSize) != 0 || std::fclose(file) != 0)
        Fail("no file for the volume");
    const pid_t deriving = fork();
    if (deriving == 0)
        Derive(volume, said[1]);
    close(said[1]);
    QApplication application(argc, argv);
    QDialog dialog;
    dialog.setStyleSheet(u"QDialog { background-color: white }"_qs);
    dialog.showFullScreen();
    char begun = 0;
    if (deriving < 0 || read(said[0], &begun, 1) != 1)
        Fail("there is no derivation");
    // When the window is on the display.
    QTimer::singleShot(500, &dialog, [&] {
        Measure(deriving);
        QCoreApplication::quit();
    });
    QApplication::exec();
    kill(deriving, SIGKILL);
    waitpid(deriving, nullptr, 0);
    std::remove(volume.c_str());
}
