#include "program_files/ico_file.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>

namespace zirvel::program_files {

namespace {

constexpr int kLargestIconSize = 256;
constexpr quint32 kDirectoryHeaderBytes = 6;
constexpr quint32 kDirectoryEntryBytes = 16;

QByteArray PngBytes(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.convertToFormat(QImage::Format_ARGB32).save(&buffer, "PNG")) {
        return {};
    }
    return bytes;
}

}  // namespace

QByteArray IcoWithPngEntries(const QList<QImage>& pictures) {
    QList<QByteArray> entries;
    for (const QImage& picture : pictures) {
        if (picture.isNull() || picture.width() != picture.height() || picture.width() > kLargestIconSize) {
            return {};
        }
        entries.append(PngBytes(picture));
        if (entries.last().isEmpty()) {
            return {};
        }
    }

    QByteArray ico;
    QDataStream out(&ico, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << quint16(1) << quint16(entries.size());  // reserved, type 1 = icon, count

    quint32 offset = kDirectoryHeaderBytes + kDirectoryEntryBytes * quint32(entries.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const int size = pictures[i].width();
        const quint8 sizeByte = size == kLargestIconSize ? 0 : quint8(size);  // 0 stands for 256
        out << sizeByte << sizeByte << quint8(0) << quint8(0);              // width, height, palette, reserved
        out << quint16(1) << quint16(32);                                     // planes, bits per pixel
        out << quint32(entries[i].size()) << offset;
        offset += quint32(entries[i].size());
    }
    for (const QByteArray& entry : entries) {
        out.writeRawData(entry.constData(), int(entry.size()));
    }
    return ico;
}

}  // namespace zirvel::program_files
