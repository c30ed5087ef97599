// SPDX-License-Identifier: Apache-2.0
// The login page for tokens: its rows, what a PIN leads to, a list that changes under the person's fingers.
#include <QGridLayout>
#include <QTimer>

#include "tests/support/test_main.h"
#include "tests/views/session.h"
#include "module/widgets/tokens_list.h"

struct TokenSession : Session
{
    explicit TokenSession(const QByteArray &row, const QList<QByteArray> &tokens)
        : Session(row)
    {
        options = 5;
        host.tokensConnected = true;
        host.tokens = tokens;
    }
    static QGridLayout *Rows()
    {
        return static_cast<QGridLayout *>(Find<TokensList>("tokensList")->layout());
    }
    template <typename Widget = QLineEdit>
    static Widget *At(int row, int column)
    {
        return static_cast<Widget *>(Rows()->itemAtPosition(row, column)->widget());
    }
};

class TestTokens : public QObject
{
    Q_OBJECT

private slots:
    void RowsAndLabels()
    {
        const QList<QByteArray> rows[] = {{}, {"Card"}, {"<b>K\xC3\xA9y</b>", QByteArray(80, 'n'), ""}};
        for (const QList<QByteArray> &tokens : rows) {
            TokenSession session(QByteArray::number(tokens.size()), tokens);
            session.Play([&] {
                QCOMPARE(Session::Screen(), 7);
                QCOMPARE(TokenSession::Rows()->count(), tokens.size() * 5);
                QCOMPARE(Session::Label("singleTokenLabel")->isVisible(), tokens.size() == 1);
                QCOMPARE(Session::Label("multipleTokensLabel")->isVisible(), tokens.size() != 1);
                for (int i = 0; i < tokens.size(); ++i) {
                    QCOMPARE(TokenSession::At<QLabel>(3 * i, 0)->text(), QString::fromUtf8(tokens[i]));
                    QCOMPARE(TokenSession::At(3 * i, 1)->echoMode(), QLineEdit::Password);
                }
                if (tokens.isEmpty())
                    return;
                QTRY_COMPARE(QApplication::focusWidget(), TokenSession::At(0, 1));
                const QWidget *last = TokenSession::At<QPushButton>(3 * (int(tokens.size()) - 1), 2);
                QVERIFY(last->mapTo(Session::Dialog(), last->rect().bottomRight()).x() <
                        Session::Dialog()->width() - 162);
                Boxes boxes({u"button2"_qs});
                QTest::mouseClick(TokenSession::At<QPushButton>(1, 1), Qt::LeftButton);
                QCOMPARE(boxes.seen.size(), 1);
                QCOMPARE(boxes.seen[0].title, u"Password Reset");
                // The run ends with a menu open and the focus in a row.
                TokenSession::At(0, 1)->setFocus();
                QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
                Session::Find("languageSelector")->showMenu();
            });
        }
    }

    // Return and the button send the same; a page that comes of it is not pressed by the same Return.
    void PinReachesTheHostOnce()
    {
        TokenSession session("", {"One", "Two"});
        RecordingHost &host = session.host;
        session.Play([&] {
            TokenSession::At(3, 1)->setText(u"12\u00E4%1"_qs);
            QTest::mouseClick(TokenSession::At<QPushButton>(3, 2), Qt::LeftButton);
            QCOMPARE(TokenSession::At(3, 1)->text(), QString());
            TokenSession::At(3, 1)->setText(u"12\u00E4%1"_qs);
            QTest::keyClick(TokenSession::At(3, 1), Qt::Key_Return);
            QTest::keyClick(TokenSession::At(0, 1), Qt::Key_Enter);
            const QByteArray second = "LoginByToken(1,12\xC3\xA4%1)";
            QCOMPARE(host.calls.mid(host.calls.size() - 3),
                     (QList<QByteArray>{second, second, "LoginByToken(0,)"}));
            QVERIFY(!fake_pbe::LogText().contains("12\xC3\xA4"));

            Boxes boxes({u"Escape"_qs});
            host.results["LoginByToken"] = kro::kUnexpected;
            QTest::keyClick(TokenSession::At(0, 1), Qt::Key_Return);
            QVERIFY(boxes.seen[0].text.contains(u"OnTokenPinEntered\nLine: 1006\n"_qs));
            host.results.clear();
            host.actions["LoginByToken"] = [&] { host.passwordView->ShowChangePassword(u"", u"", false); };
            QTest::keyClick(TokenSession::At(0, 1), Qt::Key_Return);
            QCOMPARE(Session::Screen(), 1);
            QCOMPARE(host.Count("ChangePassword()"), 0);
        });
    }

    // The list may be built anew inside a row's own Return or click, and a token may be gone by then.
    void ListChangesInsideItsOwnRow()
    {
        TokenSession session("", {"One", "Two"});
        session.host.actions["LoginByToken"] = [&] {
            session.host.tokens.removeLast();
            session.host.tokensConnected = !session.host.tokens.isEmpty();
            session.host.view->ShowInitialScreen();
        };
        session.Play([&] {
            QTRY_COMPARE(QApplication::focusWidget(), TokenSession::At(0, 1));
            QLineEdit *gone = TokenSession::At(3, 1);
            Session::Type(u"1234"_qs);
            QTest::keyClick(gone, Qt::Key_Return);
            emit gone->returnPressed();
            QCOMPARE(TokenSession::Rows()->count(), 5);
            QVERIFY(TokenSession::At(0, 1)->text().isEmpty());
            QTRY_COMPARE(QApplication::focusWidget(), TokenSession::At(0, 1));
            QTest::mouseClick(TokenSession::At<QPushButton>(0, 2), Qt::LeftButton);
            QCOMPARE(Session::Screen(), 0);
            QCOMPARE(session.host.Count("LoginByToken(1,)") + session.host.Count("LoginByToken(0,)"), 2);
        });
    }
};

PBA_REGISTER_TEST(TestTokens);
#include "tst_tokens.moc"
