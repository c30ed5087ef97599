// SPDX-License-Identifier: Apache-2.0
// The translations as they lie in the sources.
#pragma once

#include <QStringList>
#include <QXmlStreamReader>

#include "tests/support/test_files.h"

struct TranslatedText
{
    QString context;
    QString source;
    QStringList forms; // one, or one for each plural form
};

// All texts of view and host in a language; none in English, the language of the sources.
inline QList<TranslatedText> TranslatedTexts(const QString &language)
{
    QList<TranslatedText> texts;
    for (const QString &catalogue : {QStringLiteral("l10n_v_"), QStringLiteral("l10n_pba_")}) {
        if (language == QStringLiteral("en"))
            break;
        QXmlStreamReader xml(ReadFile(QStringLiteral(PBA_SOURCE_DIR "/translations/") + catalogue + language +
                                      QStringLiteral(".ts")));
        QString context;
        bool plural = false;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == u"name")
                context = xml.readElementText();
            else if (xml.name() == u"message")
                plural = xml.attributes().hasAttribute(QStringLiteral("numerus"));
            else if (xml.name() == u"source")
                texts.append({context, xml.readElementText(), {}});
            else if (xml.name() == (plural ? u"numerusform" : u"translation"))
                texts.last().forms << xml.readElementText();
        }
        if (xml.hasError())
            qFatal("%s: %s", qPrintable(catalogue), qPrintable(xml.errorString()));
    }
    return texts;
}
