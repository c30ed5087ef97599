// SPDX-License-Identifier: Apache-2.0
#include "host/screen/texts.h"

#include <string>

// Known to the translation tools, which collect the texts from these marks.
#define QT_TRANSLATE_NOOP(context, text) text

namespace host {
namespace {

constexpr char kContext[] = "pba_host";

kro::wstring_t Widen(const char *ascii)
{
    kro::wstring_t wide;
    wide.Resize(std::strlen(ascii));
    for (std::size_t i = 0; i < wide.Length(); ++i)
        wide.Buffer()[i] = static_cast<unsigned char>(ascii[i]);
    return wide;
}

} // namespace

// The same words for an unknown user and a wrong password: nobody learns here who the users are.
const MessageText kWrongPassword{
    QT_TRANSLATE_NOOP("pba_host", "Wrong user name or password"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The user name, the domain or the password is wrong. Please check the keyboard "
                      "layout and Caps Lock, and try again."),
    pba::kSeverityWarning};

const MessageText kTooManyFailures{
    QT_TRANSLATE_NOOP("pba_host", "Too many failed attempts"),
    QT_TRANSLATE_NOOP("pba_host", "There were too many failed attempts to log on. Please wait and try again. "
                                  "Seconds left: %1."),
    pba::kSeverityWarning};

const MessageText kOutOfMemory{
    QT_TRANSLATE_NOOP("pba_host", "Not enough memory"),
    QT_TRANSLATE_NOOP("pba_host",
                      "There is not enough memory to check the password. Please restart the computer and "
                      "try again."),
    pba::kSeverityError};

const MessageText kVolumeVanished{
    QT_TRANSLATE_NOOP("pba_host", "The disk does not answer"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The encrypted disk has been removed. Please connect it again and try again."),
    pba::kSeverityError};

const MessageText kVolumeUnreadable{
    QT_TRANSLATE_NOOP("pba_host", "The disk cannot be read"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The header of the encrypted disk cannot be read. Please contact the system "
                      "administrator."),
    pba::kSeverityError};

const MessageText kDiskFault{
    QT_TRANSLATE_NOOP("pba_host", "The disk has a fault"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The encrypted disk reports errors when it is read or written. Please switch "
                      "the computer off and contact the system administrator."),
    pba::kSeverityError};

const MessageText kVolumeBusy{
    QT_TRANSLATE_NOOP("pba_host", "The disk is in use"),
    QT_TRANSLATE_NOOP("pba_host",
                      "Another program is changing the encrypted disk. Please try again in a few seconds."),
    pba::kSeverityWarning};

const MessageText kNoPasswordRecovery{
    QT_TRANSLATE_NOOP("pba_host", "No password recovery"),
    QT_TRANSLATE_NOOP("pba_host",
                      "This computer has no password recovery. Please contact the system administrator."),
    pba::kSeverityInformation};

const MessageText kNoPasswordChange{
    QT_TRANSLATE_NOOP("pba_host", "The password stays as it is"),
    QT_TRANSLATE_NOOP("pba_host", "The password cannot be changed here. The operating system starts now."),
    pba::kSeverityWarning};

const MessageText kPasswordExpired{
    QT_TRANSLATE_NOOP("pba_host", "Your password has expired"),
    QT_TRANSLATE_NOOP("pba_host", "Please choose a new password and enter it twice."),
    pba::kSeverityInformation};

const MessageText kExpiredPasswordStays{
    QT_TRANSLATE_NOOP("pba_host", "Your password has expired"),
    QT_TRANSLATE_NOOP("pba_host",
                      "A new password cannot be saved now. The operating system starts with the old "
                      "one. Please contact the system administrator."),
    pba::kSeverityWarning};

const MessageText kPasswordNeedsLayout{
    QT_TRANSLATE_NOOP("pba_host", "The password depends on the keyboard layout"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The new password is saved. It cannot be typed by these keyboard layouts: %1. "
                      "Choose another layout when you log on."),
    pba::kSeverityWarning};

const MessageText kPasswordTooShort{
    QT_TRANSLATE_NOOP("pba_host", "The new password is too short"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The new password is shorter than your organisation allows. Please choose a "
                      "longer one."),
    pba::kSeverityWarning};

const MessageText kPasswordUnchanged{
    QT_TRANSLATE_NOOP("pba_host", "The new password is the old one"),
    QT_TRANSLATE_NOOP("pba_host", "Please choose a password that differs from the old one."),
    pba::kSeverityWarning};

const MessageText kPasswordNotSaved{
    QT_TRANSLATE_NOOP("pba_host", "The new password is not saved"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The new password cannot be written to the disk. Nothing has changed. Please "
                      "contact the system administrator."),
    pba::kSeverityError};

const MessageText kRecoveryCannotSave{
    QT_TRANSLATE_NOOP("pba_host", "The password cannot be reset"),
    QT_TRANSLATE_NOOP("pba_host", "The encrypted disk cannot be written, so that a new password could not be "
                                  "saved. Please contact the system administrator."),
    pba::kSeverityError};

const MessageText kRecoveryUnknownUser{
    QT_TRANSLATE_NOOP("pba_host", "Unknown user"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The response is right, but names a user who does not exist on this computer."),
    pba::kSeverityWarning};

const MessageText kRecoveryRejectedTooOften{
    QT_TRANSLATE_NOOP("pba_host", "Too many rejected responses"),
    QT_TRANSLATE_NOOP("pba_host", "The challenge is void now, no response to it is accepted any more. Please "
                                  "restart the password reset procedure for a new challenge."),
    pba::kSeverityWarning};

const MessageText kRecoveryNewPassword{
    QT_TRANSLATE_NOOP("pba_host", "Enter a new password"),
    QT_TRANSLATE_NOOP("pba_host", "Please choose a new password and enter it twice. The forgotten one is not "
                                  "accepted any more."),
    pba::kSeverityInformation};

const char kKeyboardLayoutIs[] = QT_TRANSLATE_NOOP("pba_host", "The keyboard layout is %1.");
const char kCapsLockIsOn[] = QT_TRANSLATE_NOOP("pba_host", "Caps Lock is on.");

kro::wstring_t Texts::Get(const char *english) const
{
    return m_translator ? m_translator->Translate(kContext, english, nullptr) : Widen(english);
}

kro::wstring_t Texts::Get(const char *english, std::u16string_view argument) const
{
    constexpr std::u16string_view kPlace = u"%1";
    std::u16string text(Get(english).View());
    if (const std::size_t place = text.find(kPlace); place != std::u16string::npos)
        text.replace(place, kPlace.size(), argument);
    return kro::wstring_t(text);
}

kro::result_t Texts::Show(pba::IMessageView *view, const MessageText &message) const
{
    return Show(view, message, Get(message.text).View());
}

kro::result_t Texts::Show(pba::IMessageView *view, const MessageText &message, std::u16string_view text) const
{
    return view->ShowMessage(Get(message.title), text, message.severity, pba::kMessagePlain);
}

} // namespace host
