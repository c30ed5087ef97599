// SPDX-License-Identifier: Apache-2.0
// The texts of each language: true to their originals, drawn by the fonts that ship, and nowhere cut off.
#include <QApplication>
#include <QDir>
#include <QRawFont>
#include <QTranslator>

#include "tools/tour/shown_texts.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"
#include "tools/tour/translations.h"
#include "module/widgets/pba_message_box.h"

PBA_TEST_MAIN(QApplication)

static const QString kSource = QStringLiteral(PBA_SOURCE_DIR);

static QString ReadText(const QString &path)
{
    return QString::fromUtf8(ReadFile(kSource + path)).trimmed();
}

// Everything that a translator must leave in its place.
static QStringList Marks(const QString &text)
{
    static const QRegularExpression mark(u"%[0-9n]|\\n|<[^>]*>|\\{.*\\}"_qs);
    QStringList marks;
    for (auto match = mark.globalMatch(text); match.hasNext();)
        marks << match.next().captured();
    marks.sort();
    return marks;
}

class TestTexts : public QObject
{
    Q_OBJECT

private slots:
    // Every test is run in each language.
    void initTestCase_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"en", "de", "fr", "ru", "ar"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }
    void init()
    {
        QFETCH_GLOBAL(QString, language);
        m_language = language;
        m_help.clear();
        for (const QFileInfo &file : QDir(kSource + u"/help/"_qs + language).entryInfoList(QDir::Files))
            m_help[file.baseName()] = ReadText(u"/help/%1/%2"_qs.arg(language, file.fileName()));
        m_translator = std::make_unique<QTranslator>();
        if (m_language != u"en") {
            const QString file = u"%1/%2/l10n_v"_qs.arg(QStringLiteral(PBA_TEXTS), m_language);
            QVERIFY(m_translator->load(file, u""_qs, u""_qs, u""_qs));
            QCoreApplication::installTranslator(m_translator.get());
        }
    }
    void cleanup() { m_translator.reset(); }

    void areTrueToTheOriginals()
    {
        QCOMPARE(QGuiApplication::isRightToLeft(), m_language == u"ar");
        for (const TranslatedText &text : TranslatedTexts(m_language)) {
            QVERIFY2(!text.forms.isEmpty(), qPrintable(text.source));
            for (const QString &form : text.forms) {
                QVERIFY2(Marks(form) == Marks(text.source), qPrintable(form));
                // A script whose letters join may do without mnemonics.
                QVERIFY2(form.count(u'&') <= text.source.count(u'&'), qPrintable(form));
                QVERIFY2(!text.source.contains(u"\"CONTINUE\""_qs) || form.contains(Label("CONTINUE")),
                         qPrintable(form));
            }
        }
        // The help names buttons and links as they read on the page.
        const std::pair<QString, QList<const char *>> named[] = {
            {u"pwd_lgn"_qs, {"CONTINUE", "Change", "Password change", "Forgot your password?"}},
            {u"pwd_chng"_qs, {"CONTINUE"}},
            {u"pwd_rcv"_qs, {"Restart", "Quit"}},
            {u"tkn_lgn"_qs, {"CONTINUE", "Forgot your password?"}}};
        for (const auto &[name, labels] : named) {
            for (const char *label : labels)
                QVERIFY2(m_help[name].contains(Label(label)), qPrintable(Label(label)));
        }
    }

    void haveAGlyphForEveryCharacter()
    {
        const QString suffix = m_language == u"en" ? QString() : u'.' + m_language;
        QString all = ReadText(u"/scripts/demo_settings%1.json"_qs.arg(suffix)) + m_help.values().join(u' ');
        for (const TranslatedText &text : TranslatedTexts(m_language))
            all += text.forms.join(QString());
        // Of the package that the system ships, whatever else this machine has.
        const QRawFont font(u"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"_qs, 12);
        QVERIFY(font.isValid());
        QString without;
        for (const uint character : all.toUcs4()) {
            if (QChar::isPrint(character) && !font.supportsCharacter(character))
                without += QString::fromUcs4(reinterpret_cast<const char32_t *>(&character), 1);
        }
        QCOMPARE(without, QString());
    }

    void areWholeInMessages()
    {
        for (const TranslatedText &text : TranslatedTexts(m_language)) {
            for (const QString &form : text.forms) {
                if (text.context == u"pba_host" || text.context == u"pba::QtViewImpl")
                    QCOMPARE(ClippedInMessage(text.source, form, 2), QString());
            }
        }
        for (const QString &help : m_help)
            QCOMPARE(ClippedInMessage(u"A help text."_qs, help, 0), QString());
    }

private:
    // As on the login page and in the bottom row.
    static QString Label(const char *english)
    {
        const QByteArray comment = QByteArray(english) == "CONTINUE" ? "Login" : "Change domain";
        return QCoreApplication::translate("PbaMainWindow", english, comment);
    }
    static QString ClippedInMessage(const QString &english, QString text, int severity)
    {
        static const QRegularExpression placeholder(u"%[0-9n]"_qs);
        text.replace(placeholder, u"United Kingdom"_qs);
        PbaMessageBox box;
        // A text of sentences is the message, any other a title.
        const bool isTitle = !QRegularExpression(u"[.?!)]$"_qs).match(english).hasMatch();
        box.SetTitle(isTitle ? text : QCoreApplication::translate("pba::QtViewImpl", "Password Reset"));
        box.SetText(isTitle ? QString() : text);
        box.SetSeverityIcon(severity);
        box.SetButton1Text(QCoreApplication::translate("pba::QtViewImpl", "Forgot your password?"));
        box.SetButton3Text(QCoreApplication::translate("pba::QtViewImpl", "CONTINUE"));
        box.ShowVersion();
        box.show();
        QCoreApplication::processEvents();
        return ClippedTexts(&box).join(u'\n');
    }

    QString m_language;
    QMap<QString, QString> m_help; // by the file's name
    std::unique_ptr<QTranslator> m_translator;
};

PBA_REGISTER_TEST(TestTexts);

#include "tst_texts.moc"
