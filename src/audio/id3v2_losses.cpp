// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_losses.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "audio/genres.h"
#include "audio/id3v2_reader.h"
#include "audio/id3v2_text.h"
#include "audio/id3v2_true_texts.h"
#include "audio/id3v2_walk.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

enum class FramePlace : std::uint8_t { kNone, kText, kLink, kLyrics, kComment, kPicture };

struct PlacedFrame {
  std::string_view name;
  std::string_view short_name;  // in version 2.2
  FramePlace place;
  TagText Mp3Info::*written;
};
constexpr std::array<PlacedFrame, 15> kPlacedFrames = {{
    {"TPE1", "TP1", FramePlace::kText, &Mp3Info::Artist},
    {"TIT2", "TT2", FramePlace::kText, &Mp3Info::Title},
    {"TALB", "TAL", FramePlace::kText, &Mp3Info::Album},
    {"TYER", "TYE", FramePlace::kText, &Mp3Info::Year},
    {"TRCK", "TRK", FramePlace::kText, &Mp3Info::Track},
    {"TBPM", "TBP", FramePlace::kText, &Mp3Info::Bpm},
    {"TOPE", "TOA", FramePlace::kText, &Mp3Info::Original},
    {"TCOM", "TCM", FramePlace::kText, &Mp3Info::Composer},
    {"TENC", "TEN", FramePlace::kText, &Mp3Info::EncodedBy},
    {"TCOP", "TCR", FramePlace::kText, &Mp3Info::Copyright},
    {"TCON", "TCO", FramePlace::kText, &Mp3Info::GenreV2},
    {"WXXX", "WXX", FramePlace::kLink, &Mp3Info::Url},
    {"USLT", "ULT", FramePlace::kLyrics, &Mp3Info::Lyrics},
    {"COMM", "COM", FramePlace::kComment, &Mp3Info::Comment},
    {"APIC", "PIC", FramePlace::kPicture, nullptr},
}};
constexpr PlacedFrame kNoPlace = {"", "", FramePlace::kNone, nullptr};

struct MarkedText {
  std::string_view mark;
  TagText Mp3Info::*written;
};
constexpr std::array<MarkedText, 5> kMarkedTexts = {{
    {"MUSICMATCH_PREFERENCE", &Mp3Info::Preference},
    {"MUSICMATCH_SITUATION", &Mp3Info::Situation},
    {"MUSICMATCH_BIO", &Mp3Info::Bio},
    {"MUSICMATCH_TEMPO", &Mp3Info::Tempo},
    {"MUSICMATCH_MOOD", &Mp3Info::Mood},
}};
constexpr std::string_view kMarkStart = "MUSICMATCH_";

constexpr std::size_t kLanguageBytes = 3;
constexpr std::uint8_t kUnsynchronised = 0x80;  // of the tag's flags

const PlacedFrame& PlaceOf(std::string_view name) noexcept {
  const auto* const found = std::find_if(
      kPlacedFrames.begin(), kPlacedFrames.end(),
      [name](const PlacedFrame& frame) { return name == frame.name || name == frame.short_name; });
  return found == kPlacedFrames.end() ? kNoPlace : *found;
}

/// A frame's body taken apart.
struct FrameParts {
  char encoding = 0;
  std::string_view description;
  std::string_view value;
};

/// The parts after the encoding byte and a language of `language_bytes`.
FrameParts SplitDescribed(std::string_view body, std::size_t language_bytes) noexcept {
  const std::size_t from = 1 + language_bytes;
  if (body.size() < from) return {};
  const bool wide = body[0] == 1 || body[0] == 2;
  const std::size_t end = EndOfDescription(body, from, wide);
  return {body[0], body.substr(from, end - from),
          body.substr(std::min(end + (wide ? 2 : 1), body.size()))};
}

FrameParts PartsOf(const ID3v2WalkedFrame& frame, FramePlace place) noexcept {
  const bool with_language = place == FramePlace::kComment || place == FramePlace::kLyrics;
  if (with_language) return SplitDescribed(frame.body, kLanguageBytes);
  if (frame.name.substr(1).starts_with("XX")) {
    FrameParts parts = SplitDescribed(frame.body, 0);
    if (place == FramePlace::kLink) parts.encoding = 0;  // only its description has one
    return parts;
  }
  if (frame.name[0] != 'T' || frame.body.empty()) return {0, {}, frame.body};
  return {frame.body[0], {}, frame.body.substr(1)};
}

/// Whether a text has anything beside zero bytes and byte order marks.
bool HasLetters(std::string_view text) noexcept {
  return std::any_of(text.begin(), text.end(),
                     [](char byte) { return byte != '\0' && byte != '\xFF' && byte != '\xFE'; });
}

/// A description in capitals, as far as it decides on a mark.
std::string MarkOf(std::string_view description) {
  std::string letters;
  for (const char byte : description.substr(0, 48)) {
    if (HasLetters({&byte, 1})) letters += UpperAscii(byte);
  }
  return letters;
}

/// The name that a genre such as "(17)Rock" or "(17)" is known by.
TagText GenreNameOf(std::string_view text) {
  GenreText genre = SplitGenreText(text);
  return genre.name.empty() ? TagText(GenreName(genre.genre).value_or(text)) : genre.name;
}

class LossCount {
 public:
  LossCount(std::string_view tag, const Mp3Info& written, std::span<const ID3v2PictureRange> copied)
      : tag_(tag), walk_(tag), written_(written), copied_(copied) {}

  TagLosses Count() {
    while (const std::optional<ID3v2WalkedFrame> frame = walk_.Next()) CountFrame(*frame);
    return losses_;
  }

 private:
  void CountFrame(const ID3v2WalkedFrame& frame) {
    const PlacedFrame& place = PlaceOf(frame.name);
    const FrameParts parts = PartsOf(frame, place.place);
    if (!HasLetters(parts.value)) return;
    if (place.place == FramePlace::kNone) {
      ++losses_.frames;
    } else if (place.place == FramePlace::kPicture) {
      CountPicture(frame);
    } else if (place.place == FramePlace::kComment) {
      CountComment(parts);
    } else {
      CountOnlyOne(place, parts);
    }
  }

  /// A frame that the new tag has once.
  void CountOnlyOne(const PlacedFrame& place, const FrameParts& parts) {
    const bool is_text = place.place == FramePlace::kText;
    const int values = is_text ? CountValues(parts.value, parts.encoding) : 1;
    int& seen = seen_[static_cast<std::size_t>(&place - kPlacedFrames.data())];
    if (++seen > 1) {
      (is_text ? losses_.values : losses_.frames) += values;
      return;
    }
    losses_.values += values - 1;
    CountText(parts, written_.*place.written);
  }

  void CountComment(const FrameParts& parts) {
    const std::string mark = MarkOf(parts.description);
    if (mark.starts_with(kMarkStart)) {
      for (const MarkedText& each : kMarkedTexts) {
        if (mark == each.mark) CountText(parts, written_.*each.written);
      }
    } else if (!mark.empty() || ++comments_ > 1) {
      ++losses_.frames;
    } else {
      CountText(parts, written_.Comment);
    }
  }

  void CountText(const FrameParts& parts, const TagText& written) {
    const bool unseen = walk_.Version() == 2;
    if (!unseen && (parts.encoding == 0 || written.empty())) return;
    ID3v2TrueText truth = DecodeFrameText(parts.value, parts.encoding);
    const TagText as_read = unseen ? TagText() : StripNulls(CleanFrameValue(parts.value));
    if (truth.whole && as_read == truth.text) return;
    if (&written == &written_.GenreV2) truth.text = GenreNameOf(truth.text);
    const bool as_it_was_read = !unseen && written.find(as_read) != TagText::npos;
    const bool kept = truth.whole && written.find(truth.text) != TagText::npos && !as_it_was_read;
    if (!kept) ++losses_.texts;
  }

  void CountPicture(const ID3v2WalkedFrame& frame) {
    const std::size_t end = frame.offset + kID3v2HeaderBytes + frame.body.size();
    const bool copied =
        std::any_of(copied_.begin(), copied_.end(), [&](const ID3v2PictureRange& range) {
          return range.begin == frame.offset && range.end == end;
        });
    const bool stuffed = (static_cast<std::uint8_t>(tag_[5]) & kUnsynchronised) != 0 &&
                         frame.body.find(std::string_view("\xFF\0", 2)) != std::string_view::npos;
    if (!copied || stuffed || IsFormatLost(frame)) ++losses_.pictures;
  }

  /// Flags of version 4 that tell how to decode a frame mean other things in version 3.
  [[nodiscard]] bool IsFormatLost(const ID3v2WalkedFrame& frame) const noexcept {
    return walk_.Version() == 4 && frame.format != 0;
  }

  std::string_view tag_;
  ID3v2Walk walk_;
  const Mp3Info& written_;
  std::span<const ID3v2PictureRange> copied_;
  std::array<int, kPlacedFrames.size()> seen_{};
  int comments_ = 0;
  TagLosses losses_;
};

}  // namespace

TagLosses CountID3v2Losses(std::string_view tag, const Mp3Info& written,
                           std::span<const ID3v2PictureRange> copied) {
  if (!ParseID3v2Header(tag)) return {};
  return LossCount(tag, written, copied).Count();
}

}  // namespace tunemeadow
