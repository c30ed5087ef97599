// Cards of a virtual reader, through the real card service.
#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QWidget>

#include "pbe/events.h"

class TestCardService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void CardsComeAndGo()
    {
        QWidget window;
        window.show();
        qApp->installEventFilter(this);
        QTest::qWait(300); // the service is not there yet
        QProcess service, card;
        const auto insert = [&] { card.start(QStringLiteral(VIRTUAL_CARD), {}); };
        service.start(QStringLiteral("/usr/sbin/pcscd"), {QStringLiteral("--foreground")});
        insert();
        QTRY_COMPARE_WITH_TIMEOUT(m_notices, QList<int>{pbe::kTokenAdded}, 20000);
        card.kill();
        QTRY_COMPARE_WITH_TIMEOUT(m_notices.mid(1), QList<int>{pbe::kTokenRemoved}, 20000);
        QTRY_COMPARE(card.state(), QProcess::NotRunning);
        insert();
        QTRY_COMPARE_WITH_TIMEOUT(m_notices.mid(2), QList<int>{pbe::kTokenAdded}, 20000);
        service.kill();
        QTRY_COMPARE_WITH_TIMEOUT(m_notices.mid(3), QList<int>{pbe::kTokenRemoved}, 20000);
        QTRY_VERIFY(service.state() == QProcess::NotRunning && card.state() == QProcess::NotRunning);
    }

private:
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (receiver->isWidgetType() &&
            (event->type() == pbe::kTokenAdded || event->type() == pbe::kTokenRemoved))
            m_notices.append(event->type());
        return false;
    }

    QList<int> m_notices;
};

QTEST_MAIN(TestCardService)
#include "tst_platform_card_service.moc"
