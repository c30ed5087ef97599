// SPDX-License-Identifier: Apache-2.0
// pba_compare_pictures BEFORE AFTER: names the pictures below two directories that differ in any pixel, or
// that only one of them has. Ends with 0 when there are none, with 1 when there are, with 2 when it cannot
// tell.
#include <cstdio>
#include <set>

#include <QDir>
#include <QDirIterator>
#include <QImage>

namespace {

std::set<QString> PicturesBelow(const QDir &directory)
{
    std::set<QString> names;
    QDirIterator files(directory.path(), {"*.png"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        names.insert(directory.relativeFilePath(files.next()));
    return names;
}

QString DifferingPixels(const QImage &before, const QImage &after)
{
    int count = 0;
    QRect place;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            if (before.pixel(x, y) == after.pixel(x, y))
                continue;
            ++count;
            place |= QRect(x, y, 1, 1);
        }
    }
    return QString("%1 pixels differ, within %2 x %3 at %4, %5")
        .arg(count)
        .arg(place.width())
        .arg(place.height())
        .arg(place.x())
        .arg(place.y());
}

QImage Read(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
}

// Empty when there is none.
QString Difference(const QString &beforePath, const QString &afterPath)
{
    if (!QFile::exists(beforePath))
        return "is new";
    if (!QFile::exists(afterPath))
        return "is gone";
    const QImage before = Read(beforePath);
    const QImage after = Read(afterPath);
    if (before.isNull() || after.isNull())
        return "cannot be read";
    if (before.size() != after.size())
        return QString("was %1 x %2").arg(before.width()).arg(before.height());
    return before == after ? QString() : DifferingPixels(before, after);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("usage: pba_compare_pictures BEFORE AFTER\n", stderr);
        return 2;
    }
    const QDir before(QString::fromLocal8Bit(argv[1]));
    const QDir after(QString::fromLocal8Bit(argv[2]));
    std::set<QString> names = PicturesBelow(before);
    names.merge(PicturesBelow(after));
    int differing = 0;
    for (const QString &name : names) {
        const QString difference = Difference(before.filePath(name), after.filePath(name));
        if (difference.isEmpty())
            continue;
        ++differing;
        std::printf("%s: %s\n", qPrintable(name), qPrintable(difference));
    }
    if (names.empty())
        std::fputs("pba_compare_pictures: there are no pictures in either directory\n", stderr);
    else
        std::printf("%d of %zu pictures differ\n", differing, names.size());
    return names.empty() ? 2 : differing > 0;
}
