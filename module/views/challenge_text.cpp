// SPDX-License-Identifier: Apache-2.0
#include "module/views/challenge_text.h"

namespace pba {

namespace {

constexpr qsizetype kGroup = 4;

} // namespace

QString GroupChallenge(const QString &challenge)
{
    QString text = challenge;
    text.removeIf([](QChar character) { return character.isSpace(); });
    // From the end, so that no blank moves the places of those that follow.
    for (qsizetype place = text.size() / kGroup * kGroup; place > 0; place -= kGroup)
        text.insert(place, u' ');
    return text;
}

} // namespace pba
