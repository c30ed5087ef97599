// SPDX-License-Identifier: Apache-2.0
// Log lines as the platform receives them, and the blocks that they are built in.
#include <QCoreApplication>

#include "tests/support/fake_pbe.h"
#include "tests/support/test_main.h"
#include "module/trace/module_tracer.h"
#include "module/trace/result_text.h"
#include "module/trace/trace.h"

using namespace pba;

namespace {

// Gives out blocks as often as it is told; a block that cannot grow is freed.
struct LimitedTracer : PbeModuleTracer
{
    kro::result_t AllocateMessage(std::uint32_t level, char **text, std::uint64_t capacity) override
    {
        capacities.append(capacity);
        return PbeModuleTracer::AllocateMessage(level, text, blocks-- > 0 ? capacity : ~0ull);
    }

    int blocks = 9;
    QList<std::uint64_t> capacities;
};

} // namespace

class TraceTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }

    void Lines()
    {
        const struct
        {
            std::uint32_t severity;
            const char *text;
            void (*write)();
        } rows[] = {
            {700, "orvane f\tBEGIN\r\norvane f\tEND: 0x8000004C",
             [] { TraceScope("f").SetResult(kro::kNotFound); }},
            {700, "Read(\"\\pba\\*.txt\")", [] { TraceCall("Read", u"\\pba\\é.txt"_qs); }},
            {300, "orvane a::`b'::c(48) returned 0x80000046 error, message: because",
             [] { TraceError("a::`b'::c", 48, kro::kInvalidArgument) << "because"; }},
            {700, "0x00000000 0x0010 01",
             [] {
                 TraceMessage(kTraceInfo) << TraceHex{0} << " " << TraceHex16{0x10} << " " << false << true;
             }},
            {700, "\x7F*|**|a*|\xC3\xA9",
             [] {
                 TraceMessage(kTraceInfo)
                     << static_cast<const char16_t *>(nullptr) << u"\x7F\x80|" << u"\U0001F511|"_qs
                     << QString(u"aé\0b"_qs) << "|" << TraceUtf8{u"é"_qs};
             }},
        };
        for (const auto &row : rows) {
            fake_pbe::Reset();
            row.write();
            QCOMPARE(fake_pbe::LogText(), QByteArray(row.text) + "\r\n");
            for (const fake_pbe::Message &message : fake_pbe::Now().messages) {
                QCOMPARE(message.severity, row.severity);
                QCOMPARE(message.kind, 5u);
                QCOMPARE(message.tag, "PBAQT   ");
            }
        }
    }

    void Severity()
    {
        // Level, the platform's severity, and the kind of the message; -1: suppressed.
        const QList<qint64> rows[] = {{700, 700, 5}, {701, 700, -1}, {100, 1000, 5},  {1000, 1000, 5},
                                      {750, 800, 0}, {0, 1000, 0},   {1100, 9999, 0}, {0x80000000, 700, -1}};
        for (const QList<qint64> &row : rows) {
            fake_pbe::Reset();
            fake_pbe::Now().severity = quint32(row[1]);
            TraceMessage(quint32(row[0])) << "x";
            const auto &messages = fake_pbe::Now().messages;
            QCOMPARE(messages.isEmpty() ? -1 : qint64(messages.front().kind), row[2]);
        }
    }

    void Growth()
    {
        const QPair<QList<int>, QList<std::uint64_t>> rows[] = {{{512}, {512}},
                                                                {{512, 1}, {512, 1024}},
                                                                {{1, 2000}, {512, 2001}},
                                                                {{600, 600}, {512, 1024, 2048}}};
        for (const auto &[appends, capacities] : rows) {
            fake_pbe::Reset();
            AutoObject<LimitedTracer> tracer;
            QByteArray text;
            {
                TraceMessage message(&tracer, 300);
                // The severity may fall meanwhile: a line that was begun is finished.
                fake_pbe::Now().severity = 100;
                for (const int length : appends) {
                    const QByteArray part(length, char('a' + text.size() % 26));
                    text += part;
                    message << part.constData();
                }
            }
            QCOMPARE(fake_pbe::LogText(), text + "\r\n");
            QCOMPARE(fake_pbe::Now().messages.front().severity, 300u);
            QCOMPARE(tracer.capacities, capacities);
        }

        // A message that cannot grow is lost.
        fake_pbe::Reset();
        for (const int blocks : {0, 1}) {
            AutoObject<LimitedTracer> tracer;
            tracer.blocks = blocks;
            TraceMessage(&tracer, 700) << "begin" << QString(600, u'x') << "end";
            QCOMPARE(tracer.capacities.size(), blocks + 1);
        }
        TraceMessage(nullptr, 700) << "text";
        QVERIFY(fake_pbe::Now().messages.isEmpty());
    }

    // For any code that a host may answer.
    void ResultTexts()
    {
        QCOMPARE(QStringView(kro::GetResultCodeText(0x80010109)), u"Invalid path name");
        QCOMPARE(QStringView(kro::GetResultCodeText(0x8001010A)), u"Unknown platform result code");
        QCOMPARE(QStringView(kro::GetResultCodeText(0xFFFFFFFF)), u"Unknown result code");
    }
};

PBA_REGISTER_TEST(TraceTest);

PBA_TEST_MAIN(QCoreApplication)

#include "tst_trace.moc"
