// SPDX-License-Identifier: Apache-2.0
#include "host/screen/token_messages.h"

// Known to the translation tools, which collect the texts from these marks.
#define QT_TRANSLATE_NOOP(context, text) text

namespace host {
namespace {

constexpr char kWrongPinTitle[] = QT_TRANSLATE_NOOP("pba_host", "Wrong PIN");
constexpr char kNoLogonTitle[] = QT_TRANSLATE_NOOP("pba_host", "This token does not open the disk");

const MessageText kPinMissing{
    QT_TRANSLATE_NOOP("pba_host", "The PIN is missing"),
    QT_TRANSLATE_NOOP("pba_host", "Please enter the PIN of your token or smart card."),
    pba::kSeverityWarning};

const MessageText kWrongPin{
    kWrongPinTitle,
    QT_TRANSLATE_NOOP("pba_host",
                      "The PIN is wrong. Please check the keyboard layout and Num Lock, and try again."),
    pba::kSeverityWarning};

const MessageText kFewTriesLeft{
    kWrongPinTitle,
    QT_TRANSLATE_NOOP("pba_host",
                      "The PIN is wrong. Only a few tries are left before the token locks itself."),
    pba::kSeverityWarning};

const MessageText kLastTry{
    kWrongPinTitle,
    QT_TRANSLATE_NOOP("pba_host",
                      "The PIN is wrong. This is the last try: one more wrong PIN locks the token. "
                      "If you are not sure, please contact the system administrator."),
    pba::kSeverityWarning};

const MessageText kPinLocked{
    QT_TRANSLATE_NOOP("pba_host", "The PIN is locked"),
    QT_TRANSLATE_NOOP("pba_host", "The token has locked itself after too many wrong PINs. Please contact the "
                                  "system administrator to unlock it."),
    pba::kSeverityError};

const MessageText kPinExpired{
    QT_TRANSLATE_NOOP("pba_host", "The PIN has expired"),
    QT_TRANSLATE_NOOP("pba_host", "The token wants a new PIN, which cannot be set here. Please contact the "
                                  "system administrator."),
    pba::kSeverityError};

const MessageText kRemoved{
    QT_TRANSLATE_NOOP("pba_host", "The token was removed"),
    QT_TRANSLATE_NOOP("pba_host",
                      "The token was removed or does not answer. Please connect it again and try again."),
    pba::kSeverityWarning};

const MessageText kNotEnrolled{
    kNoLogonTitle,
    QT_TRANSLATE_NOOP("pba_host",
                      "The token is not registered on this computer. Please use another token, or "
                      "contact the system administrator."),
    pba::kSeverityWarning};

const MessageText kNoKey{
    kNoLogonTitle,
    QT_TRANSLATE_NOOP("pba_host",
                      "The PIN is right, but the token no longer has the key that opens the disk. "
                      "Please contact the system administrator."),
    pba::kSeverityError};

const MessageText kTokenFailed{
    QT_TRANSLATE_NOOP("pba_host", "The token cannot be used"),
    QT_TRANSLATE_NOOP("pba_host", "The token refuses to work. Please contact the system administrator."),
    pba::kSeverityError};

} // namespace

const char *const kPinPadName = QT_TRANSLATE_NOOP("pba_host", "%1 (PIN at the reader)");

const MessageText &MessageFor(protocol::TokenError error)
{
    switch (error) {
    case protocol::TokenError::PinMissing:
        return kPinMissing;
    case protocol::TokenError::WrongPin:
        return kWrongPin;
    case protocol::TokenError::FewTriesLeft:
        return kFewTriesLeft;
    case protocol::TokenError::LastTry:
        return kLastTry;
    case protocol::TokenError::PinLocked:
        return kPinLocked;
    case protocol::TokenError::PinExpired:
        return kPinExpired;
    case protocol::TokenError::Removed:
        return kRemoved;
    case protocol::TokenError::NotEnrolled:
        return kNotEnrolled;
    case protocol::TokenError::NoKey:
        return kNoKey;
    default:
        return kTokenFailed;
    }
}

} // namespace host
