// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_pictures.h"

#include <algorithm>

#include "audio/id3v2_frames.h"
#include "audio/id3v2_text.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kPictureFrameHeader = 10;
constexpr std::size_t kLongestExtension = 8;

constexpr std::string_view kJpegStart = "\xFF\xD8\xFF";

/// The part of a MIME text after its last "/", as far as it may stand in a file name.
std::string ExtensionOf(std::string_view mime) {
  std::string extension;
  for (char letter : mime.substr(mime.rfind('/') + 1)) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    const bool fit = (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9');
    if (fit && extension.size() < kLongestExtension) extension += letter;
  }
  return extension;
}

/// The picture in an APIC frame without its ten bytes of header.
std::optional<ID3v2Picture> PictureInFrame(std::string_view frame) {
  if (frame.empty()) return std::nullopt;
  const bool wide = frame[0] == 1 || frame[0] == 2;
  const std::size_t mime_end = std::min(frame.find('\0', 1), frame.size());
  const std::size_t description = std::min(mime_end + 2, frame.size());
  const std::size_t description_end = EndOfDescription(frame, description, wide);
  const std::size_t start = frame.find(kJpegStart);
  if (start == std::string_view::npos) return std::nullopt;
  const auto before_picture = [&](std::size_t from, std::size_t to) {
    return frame.substr(std::min(from, start), std::min(to, start) - std::min(from, start));
  };
  ID3v2Picture picture;
  picture.data = frame.substr(start);
  picture.mime = before_picture(1, mime_end);
  picture.extension = ExtensionOf(picture.mime);
  if (picture.extension.empty()) picture.extension = "jpg";
  picture.description = CleanFrameValue(before_picture(description, description_end));
  const std::string_view kind = before_picture(mime_end + 1, mime_end + 2);
  if (!kind.empty()) picture.kind = static_cast<std::uint8_t>(kind[0]);
  return picture;
}

}  // namespace

std::optional<ID3v2Picture> ReadID3v2Pictures(FileBytes& file) {
  const std::optional<ID3v2Header> header = ParseID3v2Header(file.Read(0, kID3v2HeaderBytes));
  if (!header) return std::nullopt;
  const std::string_view text = LoadID3v2Text(file, *header);
  const std::size_t place = text.find("APIC", kID3v2HeaderBytes);
  if (place == std::string_view::npos) return std::nullopt;
  const auto tag_bytes = static_cast<std::size_t>(header->size) + kID3v2HeaderBytes;
  const std::optional<ID3v2TrueSize> size = PictureFrameSize(text, place, tag_bytes);
  if (!size) return std::nullopt;
  return PictureInFrame(
      text.substr(std::min(place + kPictureFrameHeader, text.size()), size->bytes));
}

std::optional<ID3v2Picture> ReadID3v2Pictures(const std::string& path) {
  FileBytes file;
  if (!file.Open(path)) return std::nullopt;
  return ReadID3v2Pictures(file);
}

}  // namespace tunemeadow
