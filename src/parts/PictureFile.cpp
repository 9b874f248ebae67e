#include "parts/PictureFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <fstream>
#include <mutex>

namespace kestrovan::pictureFile {

namespace {

constexpr std::int64_t mostBytes = std::int64_t{256} << 20;
constexpr std::int64_t mostPixels = 100'000'000;

// Formats that cannot be scaled as they are read need it all at once for a moment: 256 MiB are 64 million pixels.
void allowLargePictures()
{
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(256); });
}

// Drawings can ask for any amount of work in a few bytes.
bool isRaster(const QByteArray& format)
{
    return !format.isEmpty() && !format.startsWith("svg") && format != "pdf";
}

// Formats that turn pictures by a note in the file give their size before the turn.
QSize sizeAsStored(const QImageReader& reader, QSize size)
{
    return reader.transformation().testFlag(QImageIOHandler::TransformationRotate90) ? size.transposed() : size;
}

// The decoder takes a JPEG that was cut short for a picture, and paints the rest of it grey. Whole is one that has its
// end marker, wherever that is: some cameras add more. (ITU-T T.81, annex B)
bool isJpegCutShort(const std::string& path)
{
    constexpr int none = std::filebuf::traits_type::eof();
    constexpr int marker = 0xFF;
    constexpr int end = 0xD9;
    const auto hasLength = [](int kind) { return kind > 1 && kind != marker && (kind < 0xD0 || kind > end); };
    std::filebuf bytes;
    bytes.open(path, std::ios::in | std::ios::binary);
    int byte = bytes.pubseekpos(2) == 2 ? bytes.sbumpc() : none; // after the start marker
    while (byte != none) {
        const bool isMarker = byte == marker;
        byte = bytes.sbumpc();
        if (isMarker && byte == end)
            return false;
        if (!isMarker || !hasLength(byte))
            continue;
        const int high = bytes.sbumpc();
        const int low = bytes.sbumpc();
        if (low == none)
            return true;
        bytes.pubseekoff(std::max(high * 256 + low - 2, 0), std::ios::cur);
        byte = bytes.sbumpc();
    }
    return true;
}

// The middle of the image in the proportions of `size`, scaled to it.
QImage fill(const QImage& image, QSize size)
{
    const auto part = size.scaled(image.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QPoint corner((image.width() - part.width()) / 2, (image.height() - part.height()) / 2);
    return image.copy(QRect(corner, part)).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

std::optional<Stamp> stampOf(const std::string& path)
{
    const QFileInfo info(QString::fromStdString(path));
    if (!info.isFile()) // before anything is opened: a pipe would never answer
        return std::nullopt;
    return Stamp{info.size(), info.lastModified().toMSecsSinceEpoch()};
}

QImage cover(const std::string& path, QSize size)
{
    const auto stamp = stampOf(path);
    if (!stamp || stamp->bytes > mostBytes || size.isEmpty())
        return {};
    allowLargePictures();
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file);
    reader.setAutoTransform(true);
    const auto stored = reader.size();
    if (reader.format() == "jpeg" && isJpegCutShort(path))
        return {};
    if (!isRaster(reader.format()) || stored.isEmpty() || std::int64_t{stored.width()} * stored.height() > mostPixels)
        return {};
    const auto wanted = stored.scaled(sizeAsStored(reader, size), Qt::KeepAspectRatioByExpanding);
    if (wanted.width() < stored.width())
        reader.setScaledSize(wanted);
    const auto image = reader.read();
    return image.isNull() ? image : fill(image, size).convertToFormat(QImage::Format_RGB32);
}

} // namespace kestrovan::pictureFile
