// Log lines as the platform receives them, and the blocks that they are built in.
#include <cstdlib>
#include <cstring>
#include <functional>

#include "allocation_counter.h"
#include "fake_pbe.h"
#include "pbe/log.h"
#include "test_main.h"
#include "trace/module_tracer.h"
#include "trace/trace.h"

using namespace pba;

Q_DECLARE_METATYPE(std::function<void()>)

namespace {

// Gives out blocks of its own, as often as it is told; a block that cannot grow is scribbled over and freed.
class LimitedTracer : public PbeModuleTracer
{
public:
    explicit LimitedTracer(int allocations)
        : m_allocations(allocations)
    {
    }

    std::uint32_t AddRef() override { return 0; }
    std::uint32_t Release() override { return 0; }

    kro::result_t AllocateMessage(std::uint32_t level, char **text, std::uint64_t capacity) override
    {
        requests.append({level, capacity});
        if (m_allocations-- > 0)
            return PbeModuleTracer::AllocateMessage(level, text, capacity);
        if (*text)
            PbeModuleTracer::AllocateMessage(level, text, ~std::uint64_t{0});
        return kro::kOutOfMemory;
    }

    QList<QPair<std::uint32_t, std::uint64_t>> requests;

private:
    int m_allocations;
};

} // namespace

class TraceTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }
    void VersionAtLoad();
    void Line_data();
    void Line();
    void Severity_data();
    void Severity();
    void Growth_data();
    void Growth();
    void GrowthKeepsLevel();
    void FailedGrowthLosesMessage();
    void FailedStartStaysSilent();
    void SuppressedMessageCostsNothing();
    void ImpossibleSizeIsRefused();
    void InterfacesById();
};

void TraceTest::VersionAtLoad()
{
    const std::vector<fake_pbe::Message> atLoad{
        {700, 5, "PBAQT   ",
         "MODULE_VERSION_INFO {pba_view, Quillmark, version: " PBA_PROJECT_VERSION "}\r\n"}};
    QVERIFY(fake_pbe::MessagesAtLoad() == atLoad);
}

void TraceTest::Line_data()
{
    QTest::addColumn<std::function<void()>>("write");
    QTest::addColumn<int>("severity");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, int severity, const char *text, std::function<void()> write) {
        QTest::newRow(name) << write << severity << QByteArray(text) + "\r\n";
    };
    row("scope", 700, "orvane pba::A::B\tBEGIN\r\norvane pba::A::B\tEND: 0x00000000",
        [] { TraceScope scope("pba::A::B"); });
    row("scope with result", 700, "orvane f\tBEGIN\r\norvane f\tEND: 0x8000004C",
        [] { TraceScope("f").SetResult(kro::kNotFound); });
    row("scope left by an exception", 700, "orvane f\tBEGIN\r\norvane f\tEND: 0x00000000", [] {
        try {
            TraceScope scope("f");
            throw 1;
        } catch (int) {
        }
    });
    row("call", 700, "Read(\"\\pba\\*.txt\")", [] { TraceCall("Read", u"\\pba\\é.txt"_qs); });
    row("error", 300, "orvane a::`b'::c(48) returned 0x80000046 error, message: because",
        [] { TraceError("a::`b'::c", 48, kro::kInvalidArgument) << "because"; });
    row("empty", 300, "", [] { TraceEmptyLine(); });
    row("detail", 900, "x", [] { TraceMessage(kTraceDetail) << "x"; });
    row("decimals", 700, "0 -1 -2147483648 4294967295 18446744073709551615", [] {
        TraceMessage(kTraceInfo) << 0 << " " << -1 << " " << INT32_MIN << " " << UINT32_MAX << " "
                                 << UINT64_MAX;
    });
    row("hexadecimals", 700, "0x00000000 0x80000046 0x0010 0xABCD 01", [] {
        TraceMessage(kTraceInfo) << TraceHex{0} << " " << TraceHex{0x80000046} << " " << TraceHex16{0x10}
                                 << " " << TraceHex16{0xABCD} << " " << false << true;
    });
    row("wide text", 700, "\x7F*|**|a*|\xC3\xA9", [] {
        TraceMessage(kTraceInfo) << u"\x7F\x80|" << u"\U0001F511|"_qs << QString(u"aé\0b"_qs) << "|"
                                 << TraceUtf8{u"é"_qs};
    });
    row("null texts", 700, "ab", [] {
        TraceMessage(kTraceInfo) << "a" << static_cast<const char *>(nullptr)
                                 << static_cast<const char16_t *>(nullptr) << QString() << "b";
    });
}

void TraceTest::Line()
{
    QFETCH(std::function<void()>, write);
    QFETCH(int, severity);
    write();
    QTEST(fake_pbe::LogText(), "text");
    for (const fake_pbe::Message &message : fake_pbe::Messages()) {
        QCOMPARE(int(message.severity), severity);
        QCOMPARE(message.kind, 5u);
        QCOMPARE(message.tag, "PBAQT   ");
    }
}

void TraceTest::Severity_data()
{
    QTest::addColumn<quint32>("level");
    QTest::addColumn<quint32>("platform");
    QTest::addColumn<int>("kind"); // -1: suppressed
    QTest::newRow("equal") << 700u << 700u << 5;
    QTest::newRow("one above") << 701u << 700u << -1;
    QTest::newRow("lowest named") << 100u << 1000u << 5;
    QTest::newRow("highest named") << 1000u << 1000u << 5;
    QTest::newRow("between names") << 750u << 1000u << 0;
    QTest::newRow("below names") << 0u << 1000u << 0;
    QTest::newRow("beyond names") << 1100u << 0xFFFFFFFFu << 0;
    QTest::newRow("unsigned") << 0x80000000u << 700u << -1;
}

void TraceTest::Severity()
{
    QFETCH(quint32, level);
    QFETCH(quint32, platform);
    QFETCH(int, kind);
    fake_pbe::SetSeverity(platform);
    TraceMessage(level) << "x";
    const auto &messages = fake_pbe::Messages();
    QCOMPARE(messages.empty() ? -1 : int(messages.front().kind), kind);
    if (!messages.empty())
        QCOMPARE(messages.front().severity, level);
}

void TraceTest::Growth_data()
{
    QTest::addColumn<QList<int>>("appends");
    QTest::addColumn<QList<std::uint64_t>>("capacities");
    QTest::newRow("full") << QList<int>{512} << QList<std::uint64_t>{512};
    QTest::newRow("one more") << QList<int>{512, 1} << QList<std::uint64_t>{512, 1024};
    QTest::newRow("600 in parts") << QList<int>{300, 300} << QList<std::uint64_t>{512, 1024};
    QTest::newRow("more than double") << QList<int>{1, 2000} << QList<std::uint64_t>{512, 2001};
    QTest::newRow("twice") << QList<int>{600, 600} << QList<std::uint64_t>{512, 1024, 2048};
}

void TraceTest::Growth()
{
    QFETCH(QList<int>, appends);
    QFETCH(QList<std::uint64_t>, capacities);
    LimitedTracer tracer(9);
    QByteArray text;
    {
        TraceMessage message(&tracer, 700);
        for (const int length : appends) {
            const QByteArray part(length, char('a' + text.size() % 26));
            text += part;
            message << part.constData();
        }
    }
    QCOMPARE(fake_pbe::LogText(), text + "\r\n");
    QCOMPARE(tracer.requests.size(), capacities.size());
    for (int i = 0; i < capacities.size(); ++i)
        QCOMPARE(tracer.requests[i], qMakePair(i == 0 ? 700u : 1000u, capacities[i]));
}

// The severity may have fallen meanwhile: a line that was begun is finished.
void TraceTest::GrowthKeepsLevel()
{
    {
        TraceMessage message(300);
        fake_pbe::SetSeverity(100);
        message << QString(600, u'x');
    }
    QCOMPARE(fake_pbe::Messages().size(), 1u);
    QCOMPARE(fake_pbe::Messages().front().severity, 300u);
}

void TraceTest::FailedGrowthLosesMessage()
{
    LimitedTracer tracer(1);
    {
        TraceMessage message(&tracer, 700);
        message << "begin" << QString(600, u'x');
        QVERIFY(!message.IsActive());
        message << "end" << 12 << u"wide" << TraceUtf8{u"text"_qs};
    }
    QCOMPARE(tracer.requests.size(), 2);
    QVERIFY(fake_pbe::Messages().empty());
}

void TraceTest::FailedStartStaysSilent()
{
    LimitedTracer tracer(0);
    TraceMessage(&tracer, 700) << "text";
    TraceMessage(nullptr, 700) << "text";
    QCOMPARE(tracer.requests.size(), 1);
    QVERIFY(fake_pbe::Messages().empty());
}

void TraceTest::SuppressedMessageCostsNothing()
{
    const QString text = u"é"_qs;
    fake_pbe::SetSeverity(699);
    allocation_counter::Start();
    TraceMessage(700) << "a" << u"b" << text << TraceUtf8{text} << 1 << 2u << TraceHex{3} << true;
    TraceCall("f", text);
    const allocation_counter::Totals totals = allocation_counter::Stop();
    QCOMPARE(totals.count, 0u);
    QCOMPARE(fake_pbe::SeverityQuestions(), 2);
    QVERIFY(fake_pbe::Messages().empty());
    // The watch itself works.
    fake_pbe::SetSeverity(700);
    allocation_counter::Start();
    TraceCall("f", text);
    QVERIFY(allocation_counter::Stop().bytes >= 512 + 19);
}

void TraceTest::ImpossibleSizeIsRefused()
{
    kro::ITracer *tracer = GetModuleTracer();
    for (const std::uint64_t capacity : {~std::uint64_t{0}, ~std::uint64_t{0} - 18}) {
        char *text = nullptr;
        QCOMPARE(tracer->AllocateMessage(300, &text, capacity), kro::kOutOfMemory);
        QCOMPARE(text, nullptr);
        QCOMPARE(tracer->AllocateMessage(300, &text, 5), kro::kOk);
        QCOMPARE(QByteArray(text - 16, 8), QByteArray("RTBP\x2C\x01\0\0", 8));
        QCOMPARE(text[-8], char(5 + 19));
        QCOMPARE(tracer->AllocateMessage(1000, &text, capacity), kro::kOutOfMemory);
    }
}

void TraceTest::InterfacesById()
{
    kro::ITracer *tracer = GetModuleTracer();
    void *object = nullptr;
    QCOMPARE(tracer->QueryInterface(0, &object), kro::kOk);
    QCOMPARE(static_cast<kro::IObject *>(object), tracer);
    QCOMPARE(tracer->QueryInterface(0x6EF3329B, &object), kro::kOk);
    QCOMPARE(static_cast<kro::ITracer *>(object), tracer);
    QCOMPARE(tracer->QueryInterface(1, &object), kro::kInterfaceNotSupported);
    QCOMPARE(object, nullptr);
    QCOMPARE(tracer->AddRef() + tracer->Release(), 0u);
}

PBA_REGISTER_TEST(TraceTest);

#include "tst_trace.moc"
