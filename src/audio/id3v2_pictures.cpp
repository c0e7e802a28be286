// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_pictures.h"

#include <algorithm>
#include <array>

#include "audio/id3v2_text.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kPictureFrameHeader = 10;
constexpr std::size_t kLongestExtension = 8;

struct PictureSignature {
  std::string_view bytes;
  std::string_view extension;
};
constexpr PictureSignature kJpegStart = {"\xFF\xD8\xFF", "jpg"};
constexpr std::array<PictureSignature, 3> kOtherStarts = {
    {{"\x89PNG", "png"}, {"GIF8", "gif"}, {"BM", "bmp"}}};

/// The part of a MIME text behind its last "/", as far as it may stand in a file name.
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
  std::size_t description_end = EndOfDescription(frame, description, wide);
  std::size_t start = frame.find(kJpegStart.bytes);
  std::string_view extension = kJpegStart.extension;
  if (start == std::string_view::npos) {
    start = std::min(description_end + (wide ? 2 : 1), frame.size());
    const auto* const other = std::find_if(
        kOtherStarts.begin(), kOtherStarts.end(),
        [&](const PictureSignature& each) { return frame.substr(start).starts_with(each.bytes); });
    if (other == kOtherStarts.end()) return std::nullopt;
    extension = other->extension;
  }
  const auto before_picture = [&](std::size_t from, std::size_t to) {
    return frame.substr(std::min(from, start), std::min(to, start) - std::min(from, start));
  };
  ID3v2Picture picture;
  picture.data = frame.substr(start);
  picture.mime = before_picture(1, mime_end);
  picture.extension = ExtensionOf(picture.mime);
  if (picture.extension.empty()) picture.extension = extension;
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
  const std::optional<std::size_t> size = FrameSize(text, place);
  if (!size) return std::nullopt;
  return PictureInFrame(text.substr(std::min(place + kPictureFrameHeader, text.size()), *size));
}

std::optional<ID3v2Picture> ReadID3v2Pictures(const std::string& path) {
  FileBytes file;
  if (!file.Open(path)) return std::nullopt;
  return ReadID3v2Pictures(file);
}

}  // namespace tunemeadow
