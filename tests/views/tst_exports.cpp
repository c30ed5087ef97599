// The exports, the main view outside a run, the host's translator, the strings of the boundary.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "fake_pbe.h"
#include "kro/vector.h"
#include "settings/paths.h"
#include "test_main.h"
#include "views/session.h"

class TestExports : public QObject
{
    Q_OBJECT

private slots:
    void DeletingNothing();
    void MainViewOutsideARun();
    void RunsFollowEachOther();
    void TranslatorNeedsACatalogue_data();
    void TranslatorNeedsACatalogue();
    void UntranslatedTextsAreWidened_data();
    void UntranslatedTextsAreWidened();
    void ViewUsesItsCatalogue();
    void WipedStringIsEmptyToItsLastByte();
    void ListsKeepTheirElements();
};

namespace {

// A catalogue with one plain entry and one with plural forms.
QByteArray Catalogue(const QByteArray &context)
{
    QTemporaryDir directory;
    QFile source(directory.filePath(u"t.ts"_qs));
    if (!source.open(QIODevice::WriteOnly))
        return {};
    source.write("<?xml version=\"1.0\"?><!DOCTYPE TS><TS version=\"2.1\" language=\"de\"><context><name>" +
                 context +
                 "</name><message><source>Starting Windows</source><translation>Start \xC3\xBC</translation>"
                 "</message><message numerus=\"yes\"><source>%n tries</source><translation>"
                 "<numerusform>ein Versuch</numerusform><numerusform>%n Versuche</numerusform>"
                 "</translation></message></context></TS>");
    source.close();
    const QString output = directory.filePath(u"t.qm"_qs);
    QProcess::execute(QStringLiteral(LRELEASE), {u"-silent"_qs, source.fileName(), u"-qm"_qs, output});
    QFile compiled(output);
    return compiled.open(QIODevice::ReadOnly) ? compiled.readAll() : QByteArray();
}

QString ToString(const kro::wstring_t &text)
{
    return QString::fromUtf16(text.Data(), static_cast<qsizetype>(text.Length()));
}

} // namespace

void TestExports::DeletingNothing()
{
    DeleteMainView(nullptr);
    DeleteTranslator(nullptr);
    QVERIFY(fake_pbe::LogText().endsWith(
        "orvane DeleteTranslator\tBEGIN\r\norvane DeleteTranslator\tEND: 0x00000000\r\n"));
}

void TestExports::MainViewOutsideARun()
{
    pba::IMainView *view = CreateMainView();
    QCOMPARE(view->SetOptions(0xFFFFFFFF), kro::kOk);
    QCOMPARE(view->ShowInitialScreen(), kro::kInvalidState);
    QCOMPARE(view->ShowTestBootMessage(), kro::kInvalidState);
    QCOMPARE(view->ShowStartingOsScreen(), kro::kInvalidState);
    QCOMPARE(view->Close(), kro::kInvalidState);
    QVERIFY(!view->GetLoginByPasswordView());
    view->Idle();
    DeleteMainView(view);
}

// Options given before the run hold, a nested run is refused, and a second one begins afresh.
void TestExports::RunsFollowEachOther()
{
    Session session;
    session.View()->SetOptions(pba::kOptionLoginByPassword);
    session.options = pba::kOptionLoginByPassword;
    for (int run = 0; run < 2; ++run) {
        session.host.actions.clear();
        const kro::result_t result = session.Play([&] {
            QCOMPARE(session.View()->Run(), kro::kInvalidState);
            QCOMPARE(Session::Screen(), 0);
            QCOMPARE(session.host.view->GetLoginByPasswordView()->GetMainView(), session.View());
        });
        QCOMPARE(result, kro::kOk);
    }
    QCOMPARE(session.host.Count("Init"), 2);
}

void TestExports::TranslatorNeedsACatalogue_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("works");
    QTest::newRow("missing") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("garbage") << QByteArray("no catalogue at all") << false;
    QTest::newRow("good") << Catalogue("pba_host") << true;
}

void TestExports::TranslatorNeedsACatalogue()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, works);
    fake_pbe::Reset();
    if (!file.isNull())
        fake_pbe::WriteFile(pba::kHostCataloguePath, file);
    pba::ITranslator *translator = CreateTranslator();
    QCOMPARE(translator != nullptr, works);
    if (translator) {
        QCOMPARE(ToString(translator->Translate("pba_host", "Starting Windows", nullptr)), u"Start \u00FC");
        QCOMPARE(ToString(translator->Translate("pba_host", "%n tries", nullptr, 3)), u"%n Versuche");
    }
    DeleteTranslator(translator);
}

void TestExports::UntranslatedTextsAreWidened_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << QByteArray("Log on %1") << u"Log on %1"_qs;
    QTest::newRow("sign extended") << QByteArray("a\xE9\x80") << u"a\uFFE9\uFF80"_qs;
    QTest::newRow("empty") << QByteArray("") << u""_qs;
    QTest::newRow("null") << QByteArray() << u""_qs;
}

void TestExports::UntranslatedTextsAreWidened()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, text);
    fake_pbe::Reset();
    fake_pbe::WriteFile(pba::kHostCataloguePath, Catalogue("pba_host"));
    pba::ITranslator *translator = CreateTranslator();
    QVERIFY(translator);
    const char *bytes = source.isNull() ? nullptr : source.constData();
    QCOMPARE(ToString(translator->Translate("pba_host", bytes, nullptr)), text);
    QCOMPARE(ToString(translator->Translate(nullptr, bytes, nullptr, 2)), text);
    DeleteTranslator(translator);
}

void TestExports::ViewUsesItsCatalogue()
{
    Session session;
    fake_pbe::WriteFile(pba::kViewCataloguePath, Catalogue("PbaMainWindow"));
    session.Play([] { QCOMPARE(Session::Label("label_23")->text(), u"Start \u00FC"); });
}

void TestExports::WipedStringIsEmptyToItsLastByte()
{
    kro::wstring_t secret(u"a long secret");
    secret.Resize(3);
    const char16_t *buffer = secret.Data();
    const std::size_t capacity = secret.Capacity();
    secret.Wipe();
    QVERIFY(secret.IsEmpty());
    QVERIFY(std::all_of(buffer, buffer + capacity + 1, [](char16_t unit) { return unit == 0; }));
}

void TestExports::ListsKeepTheirElements()
{
    kro::vector_t<kro::string_t> list;
    for (int i = 0; i < 100; ++i)
        list.PushBack(kro::string_t(QByteArray::number(i).constData()));
    kro::vector_t<kro::string_t> copy(list);
    list.Resize(2);
    QCOMPARE(QByteArray(list[1].Data()), "1");
    QCOMPARE(copy.Size(), std::size_t(100));
    QCOMPARE(QByteArray(copy[99].Data()), "99");
    copy = copy;
    copy[0].Assign(copy[99].View().substr(1));
    QCOMPARE(QByteArray(copy[0].Data()), "9");
}

PBA_REGISTER_TEST(TestExports);
#include "tst_exports.moc"
