// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/picture_decoder.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageIOHandler>
#include <QImageReader>
#include <array>
#include <cstdint>

namespace tunemeadow {
namespace {

/// A progressive JPEG is walked once for each of its scans, and a scan can be a few bytes short.
constexpr std::int64_t kMostPixelsOfAllScans = 500'000'000;
constexpr int kMostMegabytes = 256;
constexpr std::string_view kJpegScanMarker = "\xFF\xDA";

/// A JPEG is scaled while it is decoded; the others are decoded whole first.
struct PictureFormat {
  std::string_view signature;
  const char* name;  ///< as QImageReader knows it
  std::int64_t most_pixels;
};

constexpr std::array kPictureFormats = {PictureFormat{"\xFF\xD8\xFF", "jpeg", 50'000'000},
                                        PictureFormat{"\x89PNG\r\n\x1A\n", "png", 40'000'000},
                                        PictureFormat{"GIF8", "gif", 16'000'000},
                                        PictureFormat{"BM", "bmp", 16'000'000}};

const PictureFormat* FormatOf(std::string_view bytes) {
  for (const PictureFormat& format : kPictureFormats) {
    if (bytes.substr(0, format.signature.size()) == format.signature) return &format;
  }
  return nullptr;
}

std::int64_t CountScans(std::string_view jpeg) {
  std::int64_t scans = 0;
  for (auto at = jpeg.find(kJpegScanMarker); at != std::string_view::npos;
       at = jpeg.find(kJpegScanMarker, at + kJpegScanMarker.size())) {
    ++scans;
  }
  return scans;
}

bool IsWorthDecoding(const QSize& size, std::string_view bytes, const PictureFormat& format) {
  if (size.isEmpty()) return false;
  const std::int64_t pixels = std::int64_t{size.width()} * size.height();
  if (pixels > format.most_pixels) return false;
  return format.name != std::string_view("jpeg") ||
         pixels * CountScans(bytes) <= kMostPixelsOfAllScans;
}

}  // namespace

QImage DecodePicture(std::string_view bytes, const QSize& room) {
  const PictureFormat* const format = FormatOf(bytes);
  if (format == nullptr) return {};
  QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  QImageReader reader(&buffer, format->name);
  reader.setAutoDetectImageFormat(false);  // the other readers are not for strangers' bytes
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(kMostMegabytes);
  const QSize size = reader.size();
  if (!IsWorthDecoding(size, bytes, *format)) return {};
  if (size.width() > room.width() || size.height() > room.height()) {
    reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
  }
  return reader.read();
}

QSize PictureSize(std::string_view bytes) {
  const PictureFormat* const format = FormatOf(bytes);
  if (format == nullptr) return {};
  QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  QImageReader reader(&buffer, format->name);
  reader.setAutoDetectImageFormat(false);
  const bool lies = (reader.transformation() & QImageIOHandler::TransformationRotate90) != 0;
  return lies ? reader.size().transposed() : reader.size();
}

}  // namespace tunemeadow
