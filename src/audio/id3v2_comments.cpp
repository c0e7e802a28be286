// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_comments.h"

#include <algorithm>

#include "audio/id3v2_text.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kLanguageAndTerminator = 4;

struct MusicmatchField {
  std::string_view mark;
  TagText Mp3Info::*field;
};
constexpr std::array<MusicmatchField, 5> kMusicmatchFields = {{
    {"_PREFERENCE", &Mp3Info::Preference},
    {"_SITUATION", &Mp3Info::Situation},
    {"_BIO", &Mp3Info::Bio},
    {"_TEMPO", &Mp3Info::Tempo},
    {"_MOOD", &Mp3Info::Mood},
}};

}  // namespace

bool ID3v2ValueFinder::IsWithin(std::size_t begin, std::size_t end) noexcept {
  const bool seen = match_end_ > 0 && match_begin_ >= begin;
  if (!seen) {
    match_end_ = 0;
    for (searched_ = std::max(searched_, begin); searched_ < end && match_end_ == 0; ++searched_) {
      match_begin_ = searched_;
      match_end_ = EndOfMatchAt(searched_).value_or(0);
    }
  }
  return match_end_ > 0 && match_end_ <= end;
}

// Between two letters may stand what cleaning takes away: first FF FE, then 9F FE of what is left.
std::optional<std::size_t> ID3v2ValueFinder::EndOfMatchAt(std::size_t at) noexcept {
  bool half = false;  // 9F was met, its FE was not
  for (std::size_t letters = 0; at < text_.Size(); ++at) {
    const char byte = text_.Byte(at);
    if (letters > 0 && byte == '\xFF' && text_.Byte(at + 1) == '\xFE') {
      ++at;
    } else if (letters > 0 && !half && byte == '\x9F') {
      half = true;
    } else if (half) {
      if (byte != '\xFE') return std::nullopt;
      half = false;
    } else {
      if (UpperAscii(byte) != needle_[letters]) return std::nullopt;
      if (++letters == needle_.size()) return at + 1;
    }
  }
  return std::nullopt;
}

ID3v2Comments::ID3v2Comments(const ID3v2TagText& text) noexcept
    : text_(text),
      musicmatch_(text, "MUSICMATCH"),
      finders_{{{text, kMusicmatchFields[0].mark},
                {text, kMusicmatchFields[1].mark},
                {text, kMusicmatchFields[2].mark},
                {text, kMusicmatchFields[3].mark},
                {text, kMusicmatchFields[4].mark}}} {
  static_assert(kFields == kMusicmatchFields.size());
}

void ID3v2Comments::Add(std::size_t offset) noexcept {
  if (failed_ || offset < next_) return;
  const std::optional<std::size_t> size = FrameSize(text_, offset);
  failed_ = !size.has_value();
  if (!failed_) Add(offset, *size);
}

void ID3v2Comments::Add(std::size_t offset, std::size_t size) noexcept {
  next_ = offset + kID3v2HeaderBytes;  // a frame header is as long
  const ID3v2ValueRange value = RawFrameValue(text_.Size(), offset, size);
  latest_ = value;
  const std::size_t begin = next_ + 1;  // after the encoding byte
  const std::size_t end = begin + value.size;
  if (!musicmatch_.IsWithin(begin, end)) {
    ordinary_ = value;
    return;
  }
  for (std::size_t i = 0; i < kFields; ++i) {
    if (finders_[i].IsWithin(begin, end)) fields_[i] = value;
  }
}

TagText ID3v2Comments::ValueOf(const std::optional<ID3v2ValueRange>& range) {
  return range ? CleanFrameValue(text_.Copy(range->begin, range->size)) : TagText();
}

bool ID3v2Comments::StoreIn(Mp3Info& info) {
  for (std::size_t i = 0; i < kFields; ++i) {
    TagText value = ValueOf(fields_[i]);
    const std::size_t zero = value.rfind('\0');
    if (zero != TagText::npos) value.erase(0, zero + 1);
    info.*kMusicmatchFields[i].field = std::move(value);
  }
  if (failed_) {
    if (latest_) info.Comment = ValueOf(latest_);
    return false;
  }
  info.Comment = ValueOf(ordinary_);
  info.Comment.erase(0, kLanguageAndTerminator);
  return true;
}

}  // namespace tunemeadow
