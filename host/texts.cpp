#include "texts.h"

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

const MessageText kNoPasswordRecovery{
    QT_TRANSLATE_NOOP("pba_host", "No password recovery"),
    QT_TRANSLATE_NOOP("pba_host",
                      "This computer has no password recovery. Please contact the system administrator."),
    pba::kSeverityInformation};

const MessageText kNoPasswordChange{
    QT_TRANSLATE_NOOP("pba_host", "The password stays as it is"),
    QT_TRANSLATE_NOOP("pba_host", "The password cannot be changed here. The operating system starts now."),
    pba::kSeverityWarning};

kro::wstring_t Texts::Get(const char *english) const
{
    return m_translator ? m_translator->Translate(kContext, english, nullptr) : Widen(english);
}

kro::result_t Texts::Show(pba::IMessageView *view, const MessageText &message) const
{
    return view->ShowMessage(Get(message.title), Get(message.text), message.severity, pba::kMessagePlain);
}

} // namespace host
