// Runs of the main view, catalogues, and a secret of the boundary.
#include <QFile>

#include "fake_pbe.h"
#include "settings/paths.h"
#include "test_main.h"
#include "views/session.h"

class TestExports : public QObject
{
    Q_OBJECT

private slots:
    // A nested run is refused, and a second one begins afresh.
    void RunsFollowEachOther()
    {
        Session session;
        for (int run = 1; run <= 2; ++run) {
            const kro::result_t result = session.Play([&] {
                QCOMPARE(session.view->Run(), kro::kInvalidState);
                QCOMPARE(Session::Screen(), 0);
                QCOMPARE(session.host.passwordView->GetMainView(), session.view.get());
            });
            QCOMPARE(result, kro::kOk);
            QCOMPARE(session.host.Count("Init"), run);
        }
    }

    void TranslatorNeedsACatalogue()
    {
        fake_pbe::Reset();
        QVERIFY(!CreateTranslator());
        for (const char *bytes : {"", "no catalogue at all"}) {
            fake_pbe::WriteFile(pba::kHostCataloguePath, bytes);
            QVERIFY2(!CreateTranslator(), bytes);
        }
    }

    // What the catalogue does not know comes back byte by byte.
    void TranslatorTranslates()
    {
        fake_pbe::Reset();
        QVERIFY(QFile::copy(QStringLiteral(CATALOGUE), fake_pbe::FileName(pba::kHostCataloguePath)));
        pba::ITranslator *translator = CreateTranslator();
        QVERIFY(translator);
        const std::pair<const char *, std::u16string_view> texts[] = {{"Starting Windows", u"Start \u00FC"},
                                                                      {"Log on %1", u"Log on %1"},
                                                                      {"a\xE9\x80", u"a\uFFE9\uFF80"},
                                                                      {"", u""},
                                                                      {nullptr, u""}};
        for (const auto &[source, text] : texts)
            QVERIFY2(translator->Translate("pba_host", source, nullptr).View() == text, source);
        QVERIFY(translator->Translate("pba_host", "%n tries", nullptr, 3).View() == u"%n Versuche");
        DeleteTranslator(translator);
    }

    void ViewUsesItsCatalogue()
    {
        Session session;
        QVERIFY(QFile::copy(QStringLiteral(CATALOGUE), fake_pbe::FileName(pba::kViewCataloguePath)));
        session.Play([] { QCOMPARE(Session::Label("label_23")->text(), u"Start \u00FC"); });
    }

    void WipedStringIsEmptyToItsLastByte()
    {
        kro::wstring_t secret(u"a long secret");
        secret.Resize(3);
        const char16_t *buffer = secret.Data();
        const std::size_t capacity = secret.Capacity();
        secret.Wipe();
        QVERIFY(secret.IsEmpty());
        QVERIFY(std::all_of(buffer, buffer + capacity + 1, [](char16_t unit) { return unit == 0; }));
    }
};

PBA_REGISTER_TEST(TestExports);
#include "tst_exports.moc"
