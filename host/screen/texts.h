// SPDX-License-Identifier: Apache-2.0
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
extern const MessageText kTooManyFailures; // "%1" is the number of seconds to wait
extern const MessageText kOutOfMemory;
extern const MessageText kVolumeVanished;
extern const MessageText kVolumeUnreadable;
extern const MessageText kDiskFault;
extern const MessageText kVolumeBusy;
extern const MessageText kNoPasswordRecovery;
extern const MessageText kNoPasswordChange;
extern const MessageText kPasswordExpired;
extern const MessageText kExpiredPasswordStays;
extern const MessageText kPasswordNeedsLayout; // "%1" is a list of names
extern const MessageText kPasswordTooShort;
extern const MessageText kPasswordUnchanged;
extern const MessageText kPasswordNotSaved;
extern const MessageText kRecoveryCannotSave;
extern const MessageText kRecoveryUnknownUser;
extern const MessageText kRecoveryRejectedTooOften;
extern const MessageText kRecoveryNewPassword; // title and message of a page

// Sentences that follow a message.
extern const char kKeyboardLayoutIs[]; // "%1" is its name
extern const char kCapsLockIsOn[];

class Texts
{
public:
    // Null leaves everything in English. Not owned; must outlive this object.
    explicit Texts(pba::ITranslator *translator)
        : m_translator(translator)
    {
    }

    kro::wstring_t Get(const char *english) const;
    // With `argument` in place of "%1".
    kro::wstring_t Get(const char *english, std::u16string_view argument) const;

    kro::result_t Show(pba::IMessageView *view, const MessageText &message) const;
    // With this text, translated already, in place of the message's own.
    kro::result_t Show(pba::IMessageView *view, const MessageText &message, std::u16string_view text) const;

private:
    pba::ITranslator *m_translator;
};

} // namespace host
