// The selectors of the bottom row: what changes the index, what is told, where the menu opens.
#include <QMenu>

#include "form_window.h"
#include "test_main.h"

class TestComboBox : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_box = std::make_unique<PbaComboBox>();
        m_told.clear();
        connect(m_box.get(), &PbaComboBox::CurrentIndexChanged, this, [this](int index) { m_told << index; });
    }

    void onlyAChoiceIsTold()
    {
        QCOMPARE(m_box->CurrentIndex(), -1);
        m_box->AddItem(u"English"_qs);
        m_box->AddItem(u"Deutsch"_qs);
        QCOMPARE(m_box->CurrentIndex(), 0);
        QCOMPARE(m_box->text(), u"English"_qs);
        m_box->SetCurrentIndex(1);
        QCOMPARE(m_box->text(), u"Deutsch"_qs);
        QVERIFY(m_told.isEmpty());

        m_box->menu()->actions().first()->trigger();
        QCOMPARE(m_box->CurrentIndex(), 0);
        QCOMPARE(m_box->text(), u"English"_qs);
        QCOMPARE(m_told, QList<int>{0});
    }

    void clearKeepsTheIndexUntilTheNextFirstItem()
    {
        m_box->AddItem(u"US"_qs);
        m_box->AddItem(u"Dvorak"_qs);
        m_box->SetCurrentIndex(1);
        m_box->Clear();
        QCOMPARE(m_box->Count(), 0);
        QVERIFY(m_box->menu()->isEmpty());
        QCOMPARE(m_box->CurrentIndex(), 1);
        m_box->AddItem(u"Deutsch"_qs);
        QCOMPARE(m_box->CurrentIndex(), 0);
        QCOMPARE(m_box->text(), u"Deutsch"_qs);
    }

    void anUnknownActionCountsAsOnePastTheLast()
    {
        m_box->AddItem(u"US"_qs);
        QAction stranger(u"Stranger"_qs);
        m_box->OnMenuTriggered(&stranger);
        QCOMPARE(m_box->CurrentIndex(), 1);
        QCOMPARE(m_box->text(), u"Stranger"_qs);
        QCOMPARE(m_told, QList<int>{1});
    }

    void menuOpensUpwardsCentred_data()
    {
        QTest::addColumn<QPoint>("window");
        QTest::newRow("window at the screen's corner") << QPoint(0, 0);
        QTest::newRow("window elsewhere") << QPoint(60, 90);
    }
    void menuOpensUpwardsCentred()
    {
        QFETCH(QPoint, window);
        FormWindow view;
        view.dialog.move(window);
        PbaComboBox *selector = view.form.languageSelector;
        for (const QString &name : {u"English"_qs, u"A language with a rather long name"_qs})
            selector->AddItem(name);
        QVERIFY(view.Show());

        selector->menu()->popup(QPoint(1, 1));
        const QRect menu = selector->menu()->frameGeometry();
        const QPoint corner = selector->mapToGlobal(QPoint(0, 0));
        QCOMPARE(menu.x(), corner.x() + selector->width() / 2 - menu.width() / 2);
        QCOMPARE(menu.y() + menu.height(), corner.y());
        selector->menu()->close();
    }

    void aNameThatIsCutIsToldByTheToolTip()
    {
        m_box->AddItem(u"United States - International"_qs);
        m_box->resize(m_box->sizeHint());
        m_box->grab();
        QCOMPARE(m_box->toolTip(), QString());
        m_box->resize(m_box->minimumSizeHint());
        m_box->grab();
        QCOMPARE(m_box->toolTip(), u"United States - International"_qs);
        QCOMPARE(m_box->text(), m_box->toolTip());
    }

private:
    std::unique_ptr<PbaComboBox> m_box;
    QList<int> m_told;
};

PBA_REGISTER_TEST(TestComboBox);

#include "tst_combo_box.moc"
