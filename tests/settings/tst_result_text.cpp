// The texts of result codes: the ends of each range and the gaps inside.
#include "test_main.h"
#include "trace/result_text.h"

class ResultTextTest : public QObject
{
    Q_OBJECT

private slots:
    void Text_data();
    void Text();
};

void ResultTextTest::Text_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QString>("text");
    const QString unknown = u"Unknown result code"_qs;
    const QString unknownPlatform = u"Unknown platform result code"_qs;
    QTest::newRow("success") << 0u << u"No error"_qs;
    QTest::newRow("false") << 1u << u"False"_qs;
    QTest::newRow("first failure") << 0x80000001u << u"Interface not supported"_qs;
    QTest::newRow("unexpected") << 0x80000040u << u"Unexpected"_qs;
    QTest::newRow("before a gap") << 0x80000046u << u"Invalid argument"_qs;
    QTest::newRow("after a gap") << 0x8000004Au << u"Not matched"_qs;
    QTest::newRow("cancelled") << 0x80000051u << u"Operation cancelled"_qs;
    QTest::newRow("index") << 0x8000005Eu << u"Invalid index"_qs;
    QTest::newRow("space") << 0x80000062u << u"Out of space"_qs;
    QTest::newRow("end of the dense range") << 0x8000006Cu << u"Insufficient resources"_qs;
    QTest::newRow("property") << 0x80000180u << u"Property not found"_qs;
    QTest::newRow("timeout") << 0x80000221u << u"Operation timeout"_qs;
    for (const quint32 code :
         {2u, 0x7FFFFFFFu, 0x80000000u, 0x80000002u, 0x8000003Fu, 0x80000047u, 0x8000004Eu, 0x80000052u,
          0x8000005Fu, 0x8000006Du, 0x80000181u, 0x80000222u, 0xFFFFFFFFu})
        QTest::addRow("gap %08X", code) << code << unknown;
    QTest::newRow("first platform code") << 0x80010100u << u"Unspecified platform error"_qs;
    QTest::newRow("last platform code") << 0x80010109u << u"Invalid path name"_qs;
    for (const quint32 code : {0x80010000u, 0x800100FFu, 0x8001010Au, 0x00010100u, 0x8001FFFFu})
        QTest::addRow("platform gap %08X", code) << code << unknownPlatform;
}

void ResultTextTest::Text()
{
    QFETCH(quint32, code);
    QTEST(QString::fromUtf16(kro::GetResultCodeText(code)), "text");
    QTEST(QString::fromUtf16(kro::ResultCodeToString(code).Data()), "text");
}

PBA_REGISTER_TEST(ResultTextTest);

#include "tst_result_text.moc"
