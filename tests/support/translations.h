// The translations as they lie in the sources.
#pragma once

#include <QList>
#include <QStringList>

struct TranslatedText
{
    QString context;
    QString source;
    // One, or one for each plural form.
    QStringList forms;
};

// All texts of view and host in a language; none in English, the language of the sources.
QList<TranslatedText> TranslatedTexts(const QString &language);
