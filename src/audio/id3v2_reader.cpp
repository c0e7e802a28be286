// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_reader.h"

#include <array>
#include <limits>
#include <optional>

#include "audio/id3v2_comments.h"
#include "audio/id3v2_names.h"
#include "audio/id3v2_walk.h"
#include "core/numbers.h"

namespace tunemeadow {
namespace {

// One field for each name up to USLT, in the order of ID3v2Name.
constexpr std::array<TagText Mp3Info::*, 13> kTextFields = {
    &Mp3Info::Artist,   &Mp3Info::Title,     &Mp3Info::Album,     &Mp3Info::TrackV2,
    &Mp3Info::Bpm,      &Mp3Info::GenreV2,   &Mp3Info::Composer,  &Mp3Info::Year,
    &Mp3Info::Original, &Mp3Info::EncodedBy, &Mp3Info::Copyright, &Mp3Info::Url,
    &Mp3Info::Lyrics,
};
constexpr auto kPicturePlace = static_cast<std::size_t>(ID3v2Name::APIC);
static_assert(kTextFields.size() == kPicturePlace);

bool IsWantedVersion(std::uint8_t version, ID3v2Versions versions) noexcept {
  return versions == ID3v2Versions::kAny || (version >= 2 && version <= 4);
}

/// Calls `visit(name, offset)` for each name of the text from its header's end on. A name among the
/// header's ten bytes doesn't count.
template <typename Visit>
void ForEachID3v2Name(ID3v2TagText& text, Visit visit) {
  constexpr std::size_t kOverlap = 3;  // of a name that begins at a piece's last byte
  const std::size_t step = text.IsWhole() ? text.Size() : ID3v2TagText::kPiece - kOverlap;
  for (std::size_t begin = kID3v2HeaderBytes; begin < text.Size(); begin += step) {
    const std::string_view piece = text.Piece(begin, step + kOverlap);
    auto hit = FindID3v2Name(piece, 0);
    for (; hit && hit->offset < step; hit = FindID3v2Name(piece, hit->offset + 1)) {
      visit(hit->name, begin + hit->offset);
    }
  }
}

/// Fills the fields from the text of a tag. False if a frame declares a size above 2^31-1.
bool FillFromTagText(ID3v2TagText& text, Mp3Info& info) {
  std::array<std::optional<std::size_t>, kPicturePlace + 1> places;
  ID3v2Comments comments(text);
  ForEachID3v2Name(text, [&](ID3v2Name name, std::size_t offset) {
    if (name == ID3v2Name::COMM) {
      comments.Add(offset);
    } else if (auto& place = places[static_cast<std::size_t>(name)]; !place) {
      place = offset;
    }
  });
  for (std::size_t i = 0; i < kTextFields.size(); ++i) {
    std::optional<TagText> value = TagText();
    if (places[i]) value = ReadFrameText(*places[i] + 1, text);
    if (!value) return false;
    info.*kTextFields[i] = std::move(*value);
  }
  info.HasPicture = places[kPicturePlace].has_value();
  return comments.StoreIn(info);
}

/// The next frame of a walk. Where the walk ends it goes on at the next known name that begins a
/// frame: a picture that this program has added is followed by zero bytes, and may be a byte longer
/// than its frame tells.
std::optional<ID3v2WalkedFrame> NextOrFoundFrame(std::string_view tag, ID3v2Walk& walk) noexcept {
  std::optional<ID3v2WalkedFrame> frame = walk.Next();
  auto hit = frame ? std::nullopt : FindID3v2Name(tag, walk.Offset());
  for (; hit && !frame; hit = FindID3v2Name(tag, hit->offset + 1)) {
    walk.GoTo(hit->offset);
    frame = walk.Next();
  }
  return frame;
}

/// Fills the fields from the frames of a tag of version 3 or 4.
void FillFromFrames(std::string_view tag, Mp3Info& info) {
  std::array<std::optional<std::string_view>, kPicturePlace + 1> values;
  ID3v2Comments comments{ID3v2TagText(tag)};
  ID3v2Walk walk(tag);
  while (const std::optional<ID3v2WalkedFrame> frame = NextOrFoundFrame(tag, walk)) {
    const auto name = FindID3v2Name(frame->name, 0);
    if (!name) continue;
    if (name->name == ID3v2Name::COMM) {
      comments.Add(frame->offset, frame->body.size());
    } else if (auto& value = values[static_cast<std::size_t>(name->name)]; !value) {
      const ID3v2ValueRange range = RawFrameValue(tag.size(), frame->offset, frame->body.size());
      value = tag.substr(range.begin, range.size);
    }
  }
  for (std::size_t i = 0; i < kTextFields.size(); ++i) {
    info.*kTextFields[i] = CleanFrameValue(values[i].value_or(""));
  }
  info.HasPicture = values[kPicturePlace].has_value();
  (void)comments.StoreIn(info);
}

}  // namespace

bool HasID3v2Tag(FileBytes& file) noexcept { return file.Read(0, 3) == "ID3"; }

bool HasID3v2Tag(const std::string& path) {
  FileBytes file;
  return file.Open(path) && HasID3v2Tag(file);
}

std::string ReadID3v2Tag(FileBytes& file, ID3v2Versions versions, Mp3Info& info) {
  const std::optional<ID3v2Header> header = ParseID3v2Header(file.Read(0, kID3v2HeaderBytes));
  if (!header || !IsWantedVersion(header->version, versions)) return {};
  ID3v2TagText text(file, *header);
  return FillFromTagText(text, info) ? "OK" : "";
}

std::string ReadID3v2TagByFrames(FileBytes& file, Mp3Info& info) {
  const std::optional<ID3v2Header> header = ParseID3v2Header(file.Read(0, kID3v2HeaderBytes));
  if (!header || (header->version != 3 && header->version != 4)) {
    return ReadID3v2Tag(file, ID3v2Versions::kAny, info);
  }
  const auto tag_bytes = static_cast<std::size_t>(header->size) + kID3v2HeaderBytes;
  FillFromFrames(LoadID3v2Text(file, *header).substr(0, tag_bytes), info);
  return "OK";
}

std::string ReadID3v2Tag(const std::string& path, ID3v2Versions versions, Mp3Info& info) {
  FileBytes file;
  if (!file.Open(path)) return {};
  return ReadID3v2Tag(file, versions, info);
}

std::string ParseID3v2Tag(std::string_view bytes, ID3v2Versions versions, Mp3Info& info) {
  FileBytes file;
  file.OpenMemory(bytes);
  return ReadID3v2Tag(file, versions, info);
}

GenreText SplitGenreText(std::string_view text) {
  GenreText split;
  const std::size_t open = text.find('(');
  const std::size_t close = text.find(')');
  if (open == std::string_view::npos || close == std::string_view::npos) {
    split.name = text;
    return split;
  }
  if (open < close) split.number = text.substr(open + 1, close - open - 1);
  split.name = text.substr(text.rfind(')') + 1);
  const std::optional<std::int64_t> number = ParseWhole(split.number);
  if (number && *number != -1 && *number >= std::numeric_limits<std::int16_t>::min() &&
      *number <= std::numeric_limits<std::int16_t>::max()) {
    split.genre = static_cast<std::int16_t>(*number);
  }
  return split;
}

}  // namespace tunemeadow
