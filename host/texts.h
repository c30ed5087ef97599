// Every text that the host shows to a person, in English, and its translation through the module.
#pragma once

#include "kro/string.h"
#include "pba/message_view.h"
#include "pba/translator.h"

namespace host {

// A message to a person: what is wrong, and what to do.
struct MessageText
{
    const char *title;
    const char *text;
    std::uint32_t severity;
};

extern const MessageText kWrongPassword;
extern const MessageText kOutOfMemory;
extern const MessageText kVolumeVanished;
extern const MessageText kVolumeUnreadable;
extern const MessageText kNoPasswordRecovery;
extern const MessageText kNoPasswordChange;

class Texts
{
public:
    // Null leaves everything in English. Not owned; must outlive this object.
    explicit Texts(pba::ITranslator *translator)
        : m_translator(translator)
    {
    }

    kro::wstring_t Get(const char *english) const;
    kro::result_t Show(pba::IMessageView *view, const MessageText &message) const;

private:
    pba::ITranslator *m_translator;
};

} // namespace host
