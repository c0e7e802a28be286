// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/start/picture_decoder.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <array>
#include <cstdint>

namespace tunemeadow {
namespace {

constexpr std::int64_t kMostPixels = 50'000'000;
/// A progressive JPEG is walked once for each of its scans, and a scan can be a few bytes short.
constexpr std::int64_t kMostPixelsOfAllScans = 300'000'000;
constexpr int kMostMegabytes = 256;
constexpr std::string_view kJpegScanMarker = "\xFF\xDA";

struct PictureFormat {
  std::string_view signature;
  const char* name;  ///< as QImageReader knows it
};

constexpr std::array kPictureFormats = {PictureFormat{"\xFF\xD8\xFF", "jpeg"},
                                        PictureFormat{"\x89PNG\r\n\x1A\n", "png"},
                                        PictureFormat{"GIF8", "gif"}, PictureFormat{"BM", "bmp"}};

const char* FormatOf(std::string_view bytes) {
  for (const PictureFormat& format : kPictureFormats) {
    if (bytes.substr(0, format.signature.size()) == format.signature) return format.name;
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

bool IsWorthDecoding(const QSize& size, std::string_view bytes, std::string_view format) {
  if (size.isEmpty()) return false;
  const std::int64_t pixels = std::int64_t{size.width()} * size.height();
  if (pixels > kMostPixels) return false;
  return format != "jpeg" || pixels * CountScans(bytes) <= kMostPixelsOfAllScans;
}

}  // namespace

QImage DecodePicture(std::string_view bytes, const QSize& room) {
  const char* const format = FormatOf(bytes);
  if (format == nullptr) return {};
  QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  QImageReader reader(&buffer, format);
  reader.setAutoDetectImageFormat(false);  // the other readers are not for strangers' bytes
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(kMostMegabytes);
  const QSize size = reader.size();
  if (!IsWorthDecoding(size, bytes, format)) return {};
  if (size.width() > room.width() || size.height() > room.height()) {
    reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
  }
  return reader.read();
}

}  // namespace tunemeadow
