// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/images/imagefile.h"

#include <QColorSpace>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace lumora {

namespace {

/// Ends early once its time is up: a small file may hold work for hours, and a decoder cannot be stopped otherwise.
class TimedFile final : public QFile
{
public:
    using QFile::QFile;

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        return m_end.hasExpired() ? -1 : QFile::readData(data, maxSize);
    }

private:
    QDeadlineTimer m_end{imageLimits.time};
};

// Formats of pixels. What draws its picture by a program (such as SVG and PDF) knows no bound for its time and may name
// other files.
constexpr std::array<QByteArrayView, 16> pixelFormats = {"png", "jpeg", "jpg", "webp", "gif",  "bmp",  "tiff", "tif",
                                                         "ico", "pbm",  "pgm", "ppm",  "heic", "heif", "avif", "jxl"};

bool isPixelFormat(const QByteArray &format)
{
    return std::ranges::find(pixelFormats, QByteArrayView(format)) != pixelFormats.end();
}

/// An image file that was opened, and its header looked at.
class OpenedImage
{
public:
    explicit OpenedImage(const QString &path)
        : m_file(path)
        // Opening a pipe would wait for its other end.
        , m_isReadable(QFileInfo(path).isFile() && m_file.open(QIODevice::ReadOnly) && hasAllowedHeader())
    {
    }

    explicit OpenedImage(int descriptor)
        : m_isReadable(m_file.open(descriptor, QIODevice::ReadOnly) && m_file.seek(0) && hasAllowedHeader())
    {
    }

    /// Empty where it is no image that may be read.
    QSize uprightSize() const { return m_isReadable ? turned(m_reader.size()) : QSize(); }

    std::optional<QImage> read(QSize largestSize)
    {
        if (!m_isReadable)
            return std::nullopt;
        const QSize size = uprightSize();
        if (!largestSize.isEmpty() && size.isValid())
            m_reader.setScaledSize(turned(fitted(size, largestSize)));
        QImage image = m_reader.read();
        if (image.isNull() || !isAllowed(image.size()))
            return std::nullopt;
        if (!largestSize.isEmpty() && fitted(image.size(), largestSize) != image.size())
            image = image.scaled(fitted(image.size(), largestSize), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        if (image.colorSpace().isValid() && image.colorSpace() != QColorSpace(QColorSpace::SRgb))
            image.convertToColorSpace(QColorSpace::SRgb);
        return image;
    }

private:
    bool hasAllowedHeader()
    {
        // A limit of the whole process, for what a header does not say.
        [[maybe_unused]] static const bool limited =
            (QImageReader::setAllocationLimit(imageLimits.decodedMebibytes), true);
        if (m_file.size() <= 0 || m_file.size() > imageLimits.fileBytes)
            return false;
        m_reader.setDecideFormatFromContent(true);
        m_reader.setDevice(&m_file);
        m_reader.setAutoTransform(true);
        return isPixelFormat(m_reader.format()) && isAllowed(m_reader.size());
    }

    static bool isAllowed(QSize size) { return qint64(size.width()) * size.height() <= imageLimits.pixels; }

    static QSize fitted(QSize size, QSize largest)
    {
        const bool fits = size.width() <= largest.width() && size.height() <= largest.height();
        return fits ? size : size.scaled(largest, Qt::KeepAspectRatio).expandedTo({1, 1});
    }

    QSize turned(QSize size) const
    {
        return m_reader.transformation().testFlag(QImageIOHandler::TransformationRotate90) ? size.transposed() : size;
    }

    TimedFile m_file;
    QImageReader m_reader;
    bool m_isReadable = false;
};

} // namespace

QStringList readableImageExtensions()
{
    QStringList extensions;
    for (const QByteArray &format : QImageReader::supportedImageFormats()) {
        if (isPixelFormat(format))
            extensions.append(QString::fromLatin1(format));
    }
    return extensions;
}

QSize imageSize(const QString &path)
{
    return OpenedImage(path).uprightSize();
}

std::optional<QImage> readImage(const QString &path, QSize largestSize)
{
    return OpenedImage(path).read(largestSize);
}

QSize imageSize(int descriptor)
{
    return OpenedImage(descriptor).uprightSize();
}

std::optional<QImage> readImage(int descriptor, QSize largestSize)
{
    return OpenedImage(descriptor).read(largestSize);
}

} // namespace lumora
