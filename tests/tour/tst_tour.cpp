// The walk through the screens in each language: every step leaves a picture, and no two steps show the same.
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

class TourTest : public QObject
{
    Q_OBJECT

private slots:
    void everyScreenHasItsPicture_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"en", "de", "fr", "ru", "ar"})
            QTest::newRow(language) << language;
    }
    void everyScreenHasItsPicture()
    {
        QFETCH(QString, language);
        QTemporaryDir directory;
        QProcess tour;
        tour.start(PBA_TOUR, {PBA_MODULE, directory.path(), language});
        QVERIFY(tour.waitForFinished(240000));
        QVERIFY2(tour.exitCode() == 0, tour.readAllStandardError());

        const QStringList names = QDir(directory.path()).entryList({"*.png"}, QDir::Files, QDir::Name);
        QVERIFY(names.first() == "01-starting.png" && names.last().endsWith("-starting-windows.png"));
        QList<QImage> seen;
        for (const QString &name : names) {
            const QImage picture(directory.filePath(name));
            QCOMPARE(name.first(2).toInt(), seen.size() + 1);
            QCOMPARE(picture.size(), QSize(1024, 768));
            QVERIFY2(!IsBlank(picture), qPrintable(name + " is blank"));
            QVERIFY2(!seen.contains(picture), qPrintable(name + " shows what an earlier one shows"));
            seen.append(picture);
        }
    }

private:
    // In the middle, where the page is, a text has its shades.
    static bool IsBlank(const QImage &picture)
    {
        QSet<QRgb> colours;
        for (int y = 192; y < 576 && colours.size() < 16; ++y) {
            for (int x = 256; x < 768; ++x)
                colours.insert(picture.pixel(x, y));
        }
        return colours.size() < 16;
    }
};

QTEST_GUILESS_MAIN(TourTest)

#include "tst_tour.moc"
