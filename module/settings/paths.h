// SPDX-License-Identifier: Apache-2.0
// Every file that the module reads or writes, by the name that it also has in the log. The platform decides
// where \pba\ lies.
#pragma once

namespace pba {

inline constexpr char16_t kSettingsPath[] = u"\\pba\\settings.bin";
inline constexpr char16_t kArgumentsPath[] = u"\\pba\\pba.ini";
inline constexpr char16_t kLastUserPath[] = u"\\pba\\last_usr.txt";
inline constexpr char16_t kLastDomainPath[] = u"\\pba\\last_dmn.txt";
inline constexpr char16_t kAutologonPath[] = u"\\pba\\autolgn.txt";

// Translations of the view's own texts and of the host's.
inline constexpr char16_t kViewCataloguePath[] = u"\\pba\\l10n_v";
inline constexpr char16_t kHostCataloguePath[] = u"\\pba\\l10n_pba";

inline constexpr char16_t kLoginByPasswordHelpPath[] = u"\\pba\\help\\pwd_lgn.txt";
inline constexpr char16_t kChangePasswordHelpPath[] = u"\\pba\\help\\pwd_chng.txt";
inline constexpr char16_t kPasswordRecoveryHelpPath[] = u"\\pba\\help\\pwd_rcv.txt";
inline constexpr char16_t kLoginByTokenHelpPath[] = u"\\pba\\help\\tkn_lgn.txt";

} // namespace pba
