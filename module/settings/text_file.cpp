// SPDX-License-Identifier: Apache-2.0
#include "module/settings/text_file.h"

#include <QStringConverter>

#include "module/settings/pba_file.h"
#include "module/trace/trace.h"

namespace {

constexpr char kRead[] = "ReadTextFromFile";
constexpr char kWrite[] = "WriteTextToFile";

// A byte-order mark decides the order; without one it is little-endian, as on every machine that this runs
// on. Half a unit at the end is no text.
QString Decode(const QByteArray &bytes)
{
    QStringDecoder decode(QStringDecoder::Utf16);
    QString text = decode(bytes);
    return text.replace(u"\r\n"_qs, u"\n"_qs);
}

// An empty text makes an empty file, without a mark.
QByteArray Encode(QString text)
{
    if (text.isEmpty())
        return QByteArray();
    QStringEncoder encode(QStringEncoder::Utf16LE, QStringConverter::Flag::WriteBom);
    return encode(text.replace(u"\n"_qs, u"\r\n"_qs));
}

} // namespace

bool ReadTextFromFile(const QString &path, QString *text)
{
    pba::TraceCall(kRead, path);
    if (!pba::PbaFileExists(path)) {
        pba::TraceError(kRead, __LINE__, kro::kNotFound) << "File \"" << path << "\" does not exist.";
        return false;
    }
    QFile file;
    if (kro::Failed(pba::OpenPbaFile(file, path, QIODevice::ReadOnly))) {
        pba::TraceError(kRead, __LINE__, kro::kAccessDenied)
            << "File \"" << path << "\" cannot be opened for reading.";
        return false;
    }
    *text = Decode(file.readAll());
    return true;
}

bool WriteTextToFile(const QString &path, const QString &text)
{
    pba::TraceCall(kWrite, path);
    QFile file;
    if (kro::Failed(pba::OpenPbaFile(file, path, QIODevice::WriteOnly))) {
        pba::TraceError(kWrite, __LINE__, kro::kAccessDenied)
            << "File \"" << path << "\" cannot be opened for writing.";
        return false;
    }
    file.write(Encode(text));
    return true;
}
