// SPDX-License-Identifier: Apache-2.0
// Whether there is what the toolkit would show the application on. It looks by itself later, and where it
// finds nothing it ends the process: by abort without an X server, by a null pointer without a framebuffer.
#include "pbe/application.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <string>

#include <fcntl.h>
#include <linux/fb.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QLibraryInfo>

namespace {

struct Finding
{
    kro::result_t result = kro::kOk;
    std::string fault;
};

Finding CheckX11()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool failed = xcb_connection_has_error(connection) != 0;
    xcb_disconnect(connection);
    if (!failed)
        return {};
    const std::string display = qgetenv("DISPLAY").toStdString();
    return {kro::kNotFound, (display.empty() ? "there is no display, for DISPLAY is not set"
                                             : "the display " + display + " does not answer") +
                                "; start an X server, or set QT_QPA_PLATFORM=linuxfb on a console"};
}

// `options` are the toolkit's, for example "fb=/dev/fb1".
std::string FramebufferOf(const QStringList &options)
{
    for (const QString &option : options) {
        if (option.startsWith(u"fb="))
            return option.mid(3).toStdString();
    }
    return access("/dev/fb0", F_OK) != 0 && access("/dev/graphics/fb0", F_OK) == 0 ? "/dev/graphics/fb0"
                                                                                   : "/dev/fb0";
}

Finding CheckFramebuffer(const QStringList &options)
{
    // The kernel's other interface; the toolkit looks for the device itself.
    if (qEnvironmentVariableIntValue("QT_QPA_FB_DRM") != 0)
        return {};
    const std::string device = FramebufferOf(options);
    fb_fix_screeninfo information{};
    const int file = open(device.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (file < 0 && (errno == EACCES || errno == EPERM))
        return {kro::kAccessDenied,
                device + ": access denied; run as root or in the group of the framebuffer"};
    const bool found = file >= 0 && ioctl(file, FBIOGET_FSCREENINFO, &information) == 0;
    if (file >= 0)
        close(file);
    if (found)
        return {};
    return {kro::kNotFound, device + ": there is no framebuffer; load its driver, or name the device by "
                                     "QT_QPA_PLATFORM=linuxfb:fb=DEVICE"};
}

bool HasPlugin(const QString &name)
{
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/platforms"_qs);
    const QString file = u"libq"_qs + name;
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM_PLUGIN_PATH") ||
           qEnvironmentVariableIsSet("QT_PLUGIN_PATH") ||
           !plugins.entryList({file + u".so"_qs, file + u"-*.so"_qs}).isEmpty();
}

// `platform` is what the toolkit is told to use: a name and options behind it, with colons between them.
Finding Check(const QString &platform)
{
    const QStringList parts = platform.split(u':');
    if (!HasPlugin(parts.first()))
        return {kro::kNotFound, "the toolkit knows no display \"" + parts.first().toStdString() +
                                    "\"; set QT_QPA_PLATFORM to xcb or linuxfb"};
    if (parts.first() == u"xcb")
        return CheckX11();
    return parts.first() == u"linuxfb" ? CheckFramebuffer(parts.sliced(1)) : Finding();
}

// The toolkit takes the first that it can use; what is wrong is told of the last one.
Finding CheckAll()
{
    QString platforms = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (platforms.isEmpty())
        platforms = qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ? u"wayland;xcb"_qs : u"xcb"_qs;
    Finding finding;
    for (const QString &platform : platforms.split(u';')) {
        finding = Check(platform);
        if (finding.result == kro::kOk)
            break;
    }
    return finding;
}

} // namespace

kro::result_t PbeCheckDisplay(kro::string_t *fault)
{
    if (!fault)
        return kro::kInvalidArgument;
    try {
        const Finding finding = CheckAll();
        fault->Assign(finding.fault);
        return finding.result;
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
}
