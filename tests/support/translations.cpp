#include "translations.h"

#include <QFile>
#include <QXmlStreamReader>

static void Append(const QString &path, QList<TranslatedText> &texts)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    QXmlStreamReader xml(&file);
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
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
}

QList<TranslatedText> TranslatedTexts(const QString &language)
{
    QList<TranslatedText> texts;
    if (language != QStringLiteral("en")) {
        for (const char *catalogue : {"l10n_v_", "l10n_pba_"})
            Append(QStringLiteral(PBA_SOURCE_DIR "/translations/") + QLatin1String(catalogue) + language +
                       QStringLiteral(".ts"),
                   texts);
    }
    return texts;
}
