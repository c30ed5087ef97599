// What the controller and the style sheet rely on in the form: pages, properties, images, colours, order.
#include "form_window.h"
#include "test_main.h"

class TestForm : public QObject
{
    Q_OBJECT

private slots:
    void pagesStandInTheOrderOfTheirIndices()
    {
        const FormWindow view;
        const QStringList expected{
            u"pageLoginByPassword"_qs, u"pageChangePassword"_qs, u"pageCollectEntropy"_qs,
            u"pageChallenge"_qs,       u"pageResponse"_qs,       u"pageTestBoot"_qs,
            u"pageNoTokens"_qs,        u"pageLoginByToken"_qs,   u"pageStarting"_qs,
            u"pageStartingWindows"_qs, u"pageNoUsers"_qs,        u"pageKeyboardTest"_qs};
        QStringList names;
        for (int i = 0; i < view.form.stackedWidget->count(); ++i)
            names << view.form.stackedWidget->widget(i)->objectName();
        QCOMPARE(names, expected);
        QCOMPARE(view.form.stackedWidget->currentIndex(), 0);
    }

    void secretsAreMasked()
    {
        const FormWindow view;
        for (const QLineEdit *edit : view.dialog.findChildren<QLineEdit *>())
            if (edit->objectName().contains(u"password"_qs, Qt::CaseInsensitive))
                QCOMPARE(edit->echoMode(), QLineEdit::Password);
        QCOMPARE(view.form.loginUserName->echoMode(), QLineEdit::Normal);
        QCOMPARE(view.form.loginDomain->echoMode(), QLineEdit::Normal);
    }

    void imagesHaveTheirSizes_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow(":/pba2_res/top_tile.png") << QSize(20, 17);
        QTest::newRow(":/pba2_res/bottom_tile.png") << QSize(23, 14);
        QTest::newRow(":/pba2_res/name.png") << QSize(233, 92);
        QTest::newRow(":/pba2_res/logo.png") << QSize(162, 75);
        QTest::newRow(":/pba2_res/button_normal.png") << QSize(112, 38);
        QTest::newRow(":/pba2_res/button_hover.png") << QSize(112, 38);
        QTest::newRow(":/pba2_res/button_pressed.png") << QSize(112, 38);
        QTest::newRow(":/pba2_res/combo_box_arrow.png") << QSize(10, 10);
        QTest::newRow(":/pba2_res/icon_error.png") << QSize(24, 24);
        QTest::newRow(":/pba2_res/icon_warning.png") << QSize(25, 26);
        QTest::newRow(":/pba2/quillmark.png") << QSize(64, 64);
    }
    void imagesHaveTheirSizes()
    {
        QTEST(QImage(QString::fromLatin1(QTest::currentDataTag())).size(), "size");
    }

    void stateColours_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("plain") << QByteArray() << u"Text"_qs << QColor(Qt::black);
        QTest::newRow("accepted") << QByteArray() << u"Accepted"_qs << QColor(u"darkgreen"_qs);
        QTest::newRow("rejected") << QByteArray() << u"Rejected"_qs << QColor(Qt::red);
        QTest::newRow("only the exact word") << QByteArray() << u"Rejected."_qs << QColor(Qt::black);
        QTest::newRow("title") << QByteArray("title") << u"Title"_qs << QColor(u"darkgreen"_qs);
        QTest::newRow("gray label") << QByteArray("gray_label") << u"Domain:"_qs << QColor(u"gray"_qs);
        QTest::newRow("error title") << QByteArray("error_title") << u"Error"_qs << QColor(Qt::red);
        QTest::newRow("fixed font") << QByteArray("fixed_font") << u"ABCD"_qs << QColor(Qt::black);
    }
    void stateColours()
    {
        QFETCH(QByteArray, property);
        QFETCH(QString, text);
        FormWindow view;
        QVERIFY(view.Show());
        QLabel label(&view.dialog);
        label.show();
        label.setText(text);
        if (!property.isEmpty())
            label.setProperty(property.constData(), true);
        Restyle(&label);
        QTEST(label.palette().color(QPalette::WindowText), "colour");
    }

    void ownColourOfALabelWins()
    {
        FormWindow view;
        QVERIFY(view.Show());
        view.form.stackedWidget->setCurrentWidget(view.form.pageNoTokens);
        QCOMPARE(view.form.label_2->palette().color(QPalette::WindowText), QColor(Qt::black));
        QCOMPARE(view.form.warningLabel->palette().color(QPalette::WindowText), QColor(235, 40, 52));
    }

    void tabOrder_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("login") << 0
                               << QStringList{u"loginDomain"_qs,          u"changeDomainButton"_qs,
                                              u"loginUserName"_qs,        u"loginPassword"_qs,
                                              u"loginButton"_qs,          u"startPasswordRecoveryButton"_qs,
                                              u"changePasswordButton"_qs, u"languageSelector"_qs};
        QTest::newRow("password change")
            << 1
            << QStringList{u"newPassword"_qs, u"confirmNewPassword"_qs, u"saveNewPasswordButton"_qs,
                           u"cancelPasswordChange"_qs, u"languageSelector"_qs};
        QTest::newRow("bottom row") << 2 << QStringList{u"languageSelector"_qs,   u"layoutSelector"_qs,
                                                        u"quitRecoveryButton"_qs, u"restartRecoveryButton"_qs,
                                                        u"helpButton"_qs,         u"languageSelector"_qs};
    }
    void tabOrder()
    {
        QFETCH(int, page);
        QFETCH(QStringList, order);
        FormWindow view;
        view.form.changePasswordButton->setEnabled(true);
        view.form.stackedWidget->setCurrentIndex(page);
        QVERIFY(view.Show());
        view.dialog.findChild<QWidget *>(order.first())->setFocus();
        QStringList visited{view.dialog.focusWidget()->objectName()};
        while (visited.size() < order.size()) {
            QTest::keyClick(view.dialog.focusWidget(), Qt::Key_Tab);
            visited << view.dialog.focusWidget()->objectName();
        }
        QCOMPARE(visited, order);
    }

    // On a page without other buttons the dialog would else make one its default, and Return in a field would
    // press it too.
    void linksAndSelectorsAreNeverTheDefault()
    {
        FormWindow view;
        int links = 0;
        for (const QPushButton *button : view.dialog.findChildren<QPushButton *>()) {
            links += button->isFlat();
            QVERIFY2(!button->isFlat() || !button->autoDefault(), qPrintable(button->objectName()));
        }
        QVERIFY(links > 0);
    }
};

PBA_REGISTER_TEST(TestForm);

#include "tst_form.moc"
