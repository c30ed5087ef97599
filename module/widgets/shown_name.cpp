// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/shown_name.h"

#include <algorithm>

#include <QTextDocument>

namespace {

constexpr qsizetype kLongest = 500;

} // namespace

QString ShownName(const QString &name)
{
    if (name.size() <= kLongest)
        return name;
    // A character may be made of two units.
    const bool parted = name.at(kLongest - 1).isHighSurrogate();
    return name.left(kLongest - (parted ? 1 : 0)) + u'\u2026';
}

QString ButtonText(const QString &name)
{
    QString text = ShownName(name).replace(u'&', u"&&"_qs);
    std::replace_if(
        text.begin(), text.end(), [](QChar unit) { return unit.isSpace(); }, u' ');
    return text;
}

QString NameOnButton(const QString &text)
{
    return QString(text).replace(u"&&"_qs, u"&"_qs);
}

QString ToolTipText(const QString &name)
{
    return Qt::mightBeRichText(name) ? name.toHtmlEscaped() : name;
}
