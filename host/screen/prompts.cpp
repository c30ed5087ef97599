// SPDX-License-Identifier: Apache-2.0
#include "host/screen/prompts.h"

// Known to the translation tools, which collect the texts from these marks.
#define QT_TRANSLATE_NOOP(context, text) text

namespace host {

const char kUserPrompt[] = QT_TRANSLATE_NOOP("pba_host", "User name (? for a forgotten password): ");
const char kDomainPrompt[] = QT_TRANSLATE_NOOP("pba_host", "Domain (may be empty): ");
const char kPasswordPrompt[] = QT_TRANSLATE_NOOP("pba_host", "Password: ");
const char kNewPasswordPrompt[] = QT_TRANSLATE_NOOP("pba_host", "New password: ");
const char kAgainPrompt[] = QT_TRANSLATE_NOOP("pba_host", "New password, once more: ");
const char kPasswordsDiffer[] =
    QT_TRANSLATE_NOOP("pba_host", "The two passwords are not the same. Please try again.");
const char kPleaseWait[] = QT_TRANSLATE_NOOP("pba_host", "Please wait.");
const char kReadOut[] = QT_TRANSLATE_NOOP("pba_host", "Please read these lines to the system administrator:");
const char kResponsePrompt[] = QT_TRANSLATE_NOOP("pba_host", "Line %1 of the response (empty to give up): ");
const char kLineWrong[] =
    QT_TRANSLATE_NOOP("pba_host", "There is a mistake in this line. Please check it and try again.");
const char kResponseRejected[] =
    QT_TRANSLATE_NOOP("pba_host", "The response is not accepted. Please check it and try again.");
const char kSystemStarts[] = QT_TRANSLATE_NOOP("pba_host", "The operating system starts.");
const char kTestBootEnds[] = QT_TRANSLATE_NOOP("pba_host", "The test boot has succeeded.");

} // namespace host
