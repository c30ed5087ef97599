// SPDX-License-Identifier: Apache-2.0
// What the screen of a terminal asks and says by itself; texts.h has what every screen says.
#pragma once

namespace host {

extern const char kUserPrompt[];
extern const char kDomainPrompt[];
extern const char kPasswordPrompt[];
extern const char kNewPasswordPrompt[];
extern const char kAgainPrompt[];
extern const char kPasswordsDiffer[];
extern const char kPleaseWait[];
extern const char kReadOut[];
extern const char kResponsePrompt[]; // "%1" is its number
extern const char kLineWrong[];
extern const char kResponseRejected[];
extern const char kSystemStarts[];
extern const char kTestBootEnds[];

} // namespace host
