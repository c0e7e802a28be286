// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_frames.h"

#include "audio/id3v2_text.h"

namespace tunemeadow {
namespace {

// Flags and encoding byte; of a link also its empty description, of a marked comment its language.
constexpr std::size_t kTextZeros = 3;
constexpr std::size_t kLinkZeros = 4;
constexpr std::size_t kMarkedCommentZeros = 6;

constexpr std::size_t kFlagBytes = 2;
constexpr std::size_t kPictureHead = 13;
constexpr std::size_t kLongText = 128;
constexpr std::size_t kTextsExpected = 2048;

struct WrittenText {
  std::string_view name;
  TagText Mp3Info::*value;
  std::size_t zeros;
};
constexpr std::array<WrittenText, 11> kWrittenTexts = {{
    {"TPE1", &Mp3Info::Artist, kTextZeros},
    {"TIT2", &Mp3Info::Title, kTextZeros},
    {"TALB", &Mp3Info::Album, kTextZeros},
    {"WXXX", &Mp3Info::Url, kLinkZeros},
    {"TYER", &Mp3Info::Year, kTextZeros},
    {"TRCK", &Mp3Info::Track, kTextZeros},
    {"TBPM", &Mp3Info::Bpm, kTextZeros},
    {"TOPE", &Mp3Info::Original, kTextZeros},
    {"TCOM", &Mp3Info::Composer, kTextZeros},
    {"TENC", &Mp3Info::EncodedBy, kTextZeros},
    {"TCOP", &Mp3Info::Copyright, kTextZeros},
}};

struct MarkedComment {
  std::string_view mark;
  TagText Mp3Info::*value;
};
constexpr std::array<MarkedComment, 5> kMarkedComments = {{
    {"MusicMatch_Tempo", &Mp3Info::Tempo},
    {"MusicMatch_Bio", &Mp3Info::Bio},
    {"MusicMatch_Mood", &Mp3Info::Mood},
    {"MusicMatch_Preference", &Mp3Info::Preference},
    {"MusicMatch_Situation", &Mp3Info::Situation},
}};

constexpr std::string_view kPictureName = "APIC";
constexpr std::string_view kCommentLanguage{"eng\0", 4};  // and the empty description

}  // namespace

std::array<char, 4> SyncSafeBytes(std::size_t value) noexcept {
  const auto part = [value](unsigned bits) { return static_cast<char>(value >> bits & 127); };
  return {part(21), part(14), part(7), part(0)};
}

ID3v2Frames::ID3v2Frames(std::size_t expected) {
  bytes_.reserve(expected + kTextsExpected);
  bytes_.assign(kFramesStart, '\0');
}

void ID3v2Frames::AddHead(std::string_view name, std::size_t size, std::size_t zeros) {
  const std::array<char, 4> size_bytes = SyncSafeBytes(size);
  bytes_ += name;
  bytes_.append(size_bytes.data(), size_bytes.size());
  bytes_.append(zeros, '\0');
  if (size >= kLongText) ++long_texts_;
}

void ID3v2Frames::AddPlainSize(std::size_t size) {
  for (const unsigned bits : {24U, 16U, 8U, 0U}) bytes_ += static_cast<char>(size >> bits & 255);
}

void ID3v2Frames::AddTexts(const Mp3Info& info) {
  for (const WrittenText& text : kWrittenTexts) {
    const TagText& value = info.*text.value;
    AddHead(text.name, text.zeros - kFlagBytes + value.size(), text.zeros);
    bytes_ += value;
  }
  AddHead("COMM", 1 + kCommentLanguage.size() + info.Comment.size(), kTextZeros);
  bytes_ += kCommentLanguage;
  bytes_ += info.Comment;
  for (const MarkedComment& comment : kMarkedComments) {
    const TagText& value = info.*comment.value;
    AddHead("COMM", kMarkedCommentZeros - kFlagBytes + comment.mark.size() + 1 + value.size(),
            kMarkedCommentZeros);
    bytes_ += comment.mark;
    bytes_ += '\0';
    bytes_ += value;
  }
}

void ID3v2Frames::AddWithPlainSize(std::string_view frame) {
  bytes_ += frame.substr(0, kPictureName.size());
  AddPlainSize(frame.size() - kID3v2HeaderBytes);
  bytes_ += frame.substr(kPictureName.size() + 4);
}

void ID3v2Frames::AddPicture(std::string_view picture, std::string_view extension) {
  const std::size_t size = picture.size() + kPictureHead;
  bytes_ += kPictureName;
  AddPlainSize(size);
  bytes_.append(kTextZeros, '\0');
  bytes_ += "image/";
  bytes_ += extension;
  bytes_.append(3, '\0');  // the end of the type, the kind "other", the empty description
  bytes_ += picture;
  bytes_.append(kPictureHead, '\0');
}

void ID3v2Frames::AddGenreAndLyrics(const Mp3Info& info) {
  const std::string genre = "(" + std::to_string(info.Genre) + ")";
  AddHead("TCON", 1 + genre.size() + info.GenreV2.size(), kTextZeros);
  bytes_ += genre;
  bytes_ += info.GenreV2;
  AddHead("USLT", 1 + info.Lyrics.size(), kTextZeros);
  bytes_ += info.Lyrics;
}

std::string ID3v2Frames::Take(std::size_t size) && {
  bytes_.resize(kFramesStart + size, '\0');
  return std::move(bytes_);
}

std::optional<ID3v2TrueSize> PictureFrameSize(std::string_view text, std::size_t offset,
                                              std::size_t tag_bytes) noexcept {
  const std::string_view tag = text.substr(0, tag_bytes);
  if (tag[3] == '\4' && offset < tag.size()) {
    const std::optional<ID3v2TrueSize> size = TrueFrameSize(tag, offset);
    if (size && size->seven_bits) return size;
  }
  const std::optional<std::size_t> plain = FrameSize(text, offset);
  if (!plain) return std::nullopt;
  return ID3v2TrueSize{*plain, false};
}

std::optional<std::vector<ID3v2PictureRange>> FindPictureFrames(std::string_view text,
                                                                std::size_t from,
                                                                std::size_t tag_bytes) {
  std::vector<ID3v2PictureRange> frames;
  std::size_t at = text.find(kPictureName, from);
  while (at != std::string_view::npos) {
    const std::optional<ID3v2TrueSize> size = PictureFrameSize(text, at, tag_bytes);
    if (!size) return std::nullopt;
    const std::size_t end = at + kID3v2HeaderBytes + size->bytes;  // a frame header is as long
    if (end > text.size() + 2) return std::nullopt;
    frames.push_back({at, end, size->seven_bits});
    at = text.find(kPictureName, end - 2);
  }
  return frames;
}

}  // namespace tunemeadow
