// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_losses.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "audio/id3v2_text.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

enum class FramePlace : std::uint8_t { kNone, kAny, kOneLink, kOneLyrics, kComment };

struct PlacedFrame {
  std::string_view name;
  std::string_view short_name;  // in version 2.2
  FramePlace place;
};
constexpr std::array<PlacedFrame, 15> kPlacedFrames = {{
    {"TPE1", "TP1", FramePlace::kAny},
    {"TIT2", "TT2", FramePlace::kAny},
    {"TALB", "TAL", FramePlace::kAny},
    {"TYER", "TYE", FramePlace::kAny},
    {"TRCK", "TRK", FramePlace::kAny},
    {"TBPM", "TBP", FramePlace::kAny},
    {"TOPE", "TOA", FramePlace::kAny},
    {"TCOM", "TCM", FramePlace::kAny},
    {"TENC", "TEN", FramePlace::kAny},
    {"TCOP", "TCR", FramePlace::kAny},
    {"TCON", "TCO", FramePlace::kAny},
    {"APIC", "", FramePlace::kAny},
    {"WXXX", "WXX", FramePlace::kOneLink},
    {"USLT", "ULT", FramePlace::kOneLyrics},
    {"COMM", "COM", FramePlace::kComment},
}};

constexpr std::size_t kLanguageBytes = 3;
constexpr std::uint8_t kExtendedHeaderFlag = 0x40;

struct WalkedFrame {
  std::string_view name;
  std::string_view body;
};

class FrameWalk {
 public:
  explicit FrameWalk(std::string_view tag) noexcept
      : tag_(tag),
        version_(static_cast<std::uint8_t>(tag[3])),
        name_bytes_(version_ == 2 ? 3 : 4),
        head_bytes_(version_ == 2 ? 6 : 10) {
    if ((static_cast<std::uint8_t>(tag[5]) & kExtendedHeaderFlag) == 0) return;
    // In 2.3 its size leaves out the four size bytes; in 2.4 it includes them.
    if (version_ == 3) at_ += 4 + SizeAt(at_, 4, 256);
    if (version_ == 4) at_ += SizeAt(at_, 4, 128);
  }

  std::optional<WalkedFrame> Next() noexcept {
    if (!HasNameAt(at_)) return std::nullopt;
    std::array<std::size_t, 2> sizes = {SizeAt(at_ + name_bytes_, name_bytes_, 256),
                                        SizeAt(at_ + name_bytes_, name_bytes_, 128)};
    if (version_ == 2) sizes[1] = sizes[0];
    if (version_ == 4) std::swap(sizes[0], sizes[1]);
    const std::size_t body = at_ + head_bytes_;
    const bool second = SenseAt(body + sizes[1]) > SenseAt(body + sizes[0]);
    const std::size_t size = sizes[second ? 1 : 0];
    if (SenseAt(body + size) == 0) return std::nullopt;
    const WalkedFrame frame = {tag_.substr(at_, name_bytes_), tag_.substr(body, size)};
    at_ = body + size;
    return frame;
  }

 private:
  [[nodiscard]] std::size_t SizeAt(std::size_t at, std::size_t count,
                                   std::size_t base) const noexcept {
    std::size_t size = 0;
    for (std::size_t i = at; i < at + count; ++i) {
      size = size * base + (i < tag_.size() ? static_cast<std::uint8_t>(tag_[i]) : 0U);
    }
    return size;
  }

  [[nodiscard]] bool HasNameAt(std::size_t at) const noexcept {
    if (at > tag_.size() || tag_.size() - at < head_bytes_) return false;
    const std::string_view name = tag_.substr(at, name_bytes_);
    return std::all_of(name.begin(), name.end(), [](char letter) {
      return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
    });
  }

  /// How well a frame may end there: 2 before a frame, 1 before padding or the end, else 0.
  [[nodiscard]] int SenseAt(std::size_t at) const noexcept {
    if (HasNameAt(at)) return 2;
    return at == tag_.size() || (at < tag_.size() && tag_[at] == '\0') ? 1 : 0;
  }

  std::string_view tag_;
  std::uint8_t version_;
  std::size_t name_bytes_;
  std::size_t head_bytes_;
  std::size_t at_ = kID3v2HeaderBytes;
};

struct DescribedValue {
  std::string_view description;
  std::string_view value;
};

/// The parts behind the encoding byte and a language of `language_bytes`.
DescribedValue SplitDescribed(std::string_view body, std::size_t language_bytes) noexcept {
  const std::size_t from = 1 + language_bytes;
  if (body.size() < from) return {};
  const bool wide = body[0] == 1 || body[0] == 2;
  const std::size_t end = EndOfDescription(body, from, wide);
  return {body.substr(from, end - from), body.substr(std::min(end + (wide ? 2 : 1), body.size()))};
}

/// Whether a text has anything beside zero bytes and byte order marks.
bool HasLetters(std::string_view text) noexcept {
  return std::any_of(text.begin(), text.end(),
                     [](char byte) { return byte != '\0' && byte != '\xFF' && byte != '\xFE'; });
}

bool IsMusicmatchMark(std::string_view description) {
  std::string letters;
  for (const char byte : description.substr(0, 32)) {
    if (HasLetters({&byte, 1})) letters += UpperAscii(byte);
  }
  return letters.starts_with("MUSICMATCH_");
}

FramePlace PlaceOf(std::string_view name) noexcept {
  for (const PlacedFrame& frame : kPlacedFrames) {
    if (name == frame.name || name == frame.short_name) return frame.place;
  }
  return FramePlace::kNone;
}

/// The value of a frame, as far as it decides whether the frame is empty.
std::string_view ValueOf(const WalkedFrame& frame, FramePlace place) noexcept {
  const bool with_language = place == FramePlace::kComment || place == FramePlace::kOneLyrics;
  if (with_language) return SplitDescribed(frame.body, kLanguageBytes).value;
  if (frame.name.substr(1).starts_with("XX")) return SplitDescribed(frame.body, 0).value;
  return frame.body.substr(frame.name[0] == 'T' && !frame.body.empty() ? 1 : 0);
}

}  // namespace

int CountLostFrames(std::string_view tag) {
  if (!ParseID3v2Header(tag)) return 0;
  int lost = 0;
  int links = 0;
  int lyrics = 0;
  int comments = 0;
  FrameWalk walk(tag);
  while (const std::optional<WalkedFrame> frame = walk.Next()) {
    const FramePlace place = PlaceOf(frame->name);
    if (place == FramePlace::kAny || !HasLetters(ValueOf(*frame, place))) continue;
    if (place == FramePlace::kNone) ++lost;
    if (place == FramePlace::kOneLink && ++links > 1) ++lost;
    if (place == FramePlace::kOneLyrics && ++lyrics > 1) ++lost;
    if (place != FramePlace::kComment) continue;
    const std::string_view description = SplitDescribed(frame->body, kLanguageBytes).description;
    if (IsMusicmatchMark(description)) continue;
    if (HasLetters(description) || ++comments > 1) ++lost;
  }
  return lost;
}

}  // namespace tunemeadow
