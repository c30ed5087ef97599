// SPDX-License-Identifier: Apache-2.0
// Secret fields, and names that come from elsewhere: in a mirrored window, and long ones at the sizes of real
// screens.
#include <QMenu>
#include <QSignalSpy>
#include <QTimer>

#include "module/settings/paths.h"
#include "module/settings/text_file.h"
#include "settings_format/settings_encoder.h"
#include "tests/support/test_main.h"
#include "tests/views/session.h"
#include "module/widgets/pba_combo_box.h"
#include "module/widgets/pba_elided_label.h"
#include "module/widgets/secret_field.h"

class TestWidgets : public QObject
{
    Q_OBJECT

private slots:
    void AnEmptiedSecretFieldKeepsNothingButItsRules()
    {
        Session().Play([] {
            QLineEdit field;
            field.setMaxLength(7);
            WatchSecretField(&field);
            for (const QString &mask : {QString(), u">HHHH;_"_qs}) {
                field.setInputMask(mask);
                QTest::keyClicks(&field, u"beef"_qs);
                QSignalSpy told(&field, &QLineEdit::textChanged);
                EmptySecretField(&field);
                QVERIFY(field.text().isEmpty() && !field.isUndoAvailable() && told.count() == 1);
                field.undo();
                QTest::keyClicks(&field, u"12345678"_qs);
                QCOMPARE(field.text(), mask.isEmpty() ? u"1234567"_qs : u"1234"_qs);
            }
        });
    }

    void EveryNameOfALongListCanBeChosen()
    {
        Session().Play([] {
            PbaComboBox selector;
            QSignalSpy chosen(&selector, &PbaComboBox::CurrentIndexChanged);
            for (int i = 0; i < 1001; ++i)
                selector.AddItem(QString::number(i));
            QTimer::singleShot(0, &selector, [&] {
                for (QAction *part : selector.menu()->actions()) {
                    part->menu()->popup({});
                    part->menu()->actions().first()->trigger();
                    part->menu()->actions().last()->trigger();
                }
                selector.Clear();
            });
            selector.showMenu();
            QList<int> indexes;
            for (const QVariantList &arguments : chosen)
                indexes.append(arguments[0].toInt());
            QCOMPARE(indexes, (QList{0, 499, 500, 999, 1000, 1000}));
            QCOMPARE(selector.text(), u"1000");
            selector.AddItem(QString(2000000, u'&'));
            QCOMPARE(selector.menu()->actions().size(), 1);
            QCOMPARE(selector.text().size(), 2 * 500 + 1);
        });
    }

    void LongNamesKeepTheMargins()
    {
        const std::u16string longName = u"A-COMPUTER-WITH-A-LONG-NAME.in-a-domain.of-its-own.example";
        pba::ConstantSettingsRecord settings{longName, {}};
        settings.prebootSettings.inputLanguages = {{1033, longName, {{0x409, longName, {}}}}};
        for (const auto &[size, direction] :
             {std::pair(QSize(800, 600), Qt::RightToLeft), std::pair(QSize(1024, 768), Qt::LeftToRight)}) {
            Session session;
            fake_pbe::WriteFile(pba::kSettingsPath, QByteArray::fromStdString(pba::EncodeSettings(settings)));
            WriteTextToFile(QString::fromUtf16(pba::kLastDomainPath),
                            QString::fromStdU16String(longName).repeated(3));
            session.Play([size = size, direction = direction] {
                QDialog *dialog = Session::Dialog();
                dialog->setLayoutDirection(direction);
                dialog->resize(size);
                QCoreApplication::processEvents();
                QCOMPARE(dialog->size(), size);
                const auto placeOf = [dialog](const QWidget *part) {
                    return QRect(part->mapTo(dialog, QPoint()), part->size());
                };
                const auto *frame = Session::Find<QWidget>("frame");
                for (const auto *part : frame->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
                    const QRect place = placeOf(part);
                    QVERIFY2(part->isHidden() || (place.left() >= 233 && place.right() < size.width() - 162),
                             qPrintable(part->objectName()));
                }
                QVERIFY(placeOf(Session::Find("helpButton")).bottom() < size.height());
            });
        }
    }

    // Read out to the administrator, a name must not begin with its end.
    void NameKeepsItsOrderInAMirroredWindow()
    {
        Session().Play([] {
            QGuiApplication::setLayoutDirection(Qt::RightToLeft);
            PbaElidedLabel first(u"01-PC"_qs);
            PbaElidedLabel second(u"PC-01"_qs);
            const bool alike = first.grab().toImage() == second.grab().toImage();
            QGuiApplication::setLayoutDirection(Qt::LeftToRight);
            QVERIFY(!alike);
        });
    }
};

PBA_REGISTER_TEST(TestWidgets);
#include "tst_widgets.moc"
