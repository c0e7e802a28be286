// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/like_pattern.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "core/text.h"

namespace tunemeadow {
namespace {

/// Texts without other letters need no copy.
unsigned char FoldedByte(char c) noexcept { return static_cast<unsigned char>(LowerAscii(c)); }

/// Whether the folded `piece` stands at `at`, in either case.
bool StandsAt(std::string_view piece, const char* at) noexcept {
  return std::equal(piece.begin(), piece.end(), at, [](char wanted, char found) {
    return static_cast<unsigned char>(wanted) == FoldedByte(found);
  });
}

/// Sixteen bytes side by side, on any processor.
using ByteLanes = unsigned char __attribute__((vector_size(16)));

/// Compares sixteen bytes with one folded byte. A letter is met in either case, now and then
/// another byte passes for it: what is found is only a candidate.
class LaneByte {
 public:
  explicit LaneByte(char folded) noexcept {
    const bool letter = folded >= 'a' && folded <= 'z';
    std::memset(&case_bit_, letter ? 0x20 : 0, sizeof case_bit_);
    std::memset(&wanted_, static_cast<unsigned char>(folded), sizeof wanted_);
  }

  [[nodiscard]] ByteLanes Hits(const char* at) const noexcept {
    ByteLanes lanes;
    std::memcpy(&lanes, at, sizeof lanes);
    return reinterpret_cast<ByteLanes>((lanes | case_bit_) == wanted_);
  }

 private:
  ByteLanes case_bit_;
  ByteLanes wanted_;
};

/// The end of the first place of `piece`, by its first and last byte; at least sixteen places must
/// be left to look at.
std::size_t EndOfFirstByLanes(std::string_view piece, std::string_view text,
                              std::size_t from) noexcept {
  const LaneByte first(piece.front());
  const LaneByte last(piece.back());
  const std::size_t last_block = text.size() - piece.size() + 1 - sizeof(ByteLanes);
  for (std::size_t block = from;; block += sizeof(ByteLanes)) {
    block = std::min(block, last_block);  // the last one overlaps the one before
    const char* const at = text.data() + block;
    const ByteLanes hits = first.Hits(at) & last.Hits(at + piece.size() - 1);
    std::array<std::uint64_t, 2> halves{};
    std::memcpy(halves.data(), &hits, sizeof hits);
    if ((halves[0] | halves[1]) != 0) {
      for (std::size_t lane = 0; lane < sizeof(ByteLanes); ++lane) {
        if (hits[lane] != 0 && StandsAt(piece, at + lane)) return block + lane + piece.size();
      }
    }
    if (block == last_block) return std::string_view::npos;
  }
}

/// The first byte of a malformed one in folded text; it holds the two upper bits, a continuation
/// byte the others. So no part of a character is ever taken for one.
constexpr unsigned char kMalformedLead = 0xFC;

/// Appends the text with each character folded.
void AppendFolded(std::string& folded, std::string_view text) {
  while (!text.empty()) {
    if ((text.front() & 0x80) == 0) {
      folded += static_cast<char>(FoldedByte(text.front()));
      text.remove_prefix(1);
      continue;
    }
    const CodePoint point = DecodeUtf8(text);
    if (point.value >= kMalformed) {
      const auto byte = static_cast<unsigned char>(text.front());
      folded += static_cast<char>(kMalformedLead | byte >> 6);
      folded += static_cast<char>(0x80 | (byte & 0x3F));
    } else {
      AppendUtf8(folded, FoldCase(point.value));
    }
    text.remove_prefix(point.bytes);
  }
}

/// Bytes of the first character of a folded text.
std::size_t FoldedCharacterBytes(std::string_view folded) noexcept {
  if (static_cast<unsigned char>(folded.front()) >= kMalformedLead) return 2;
  return DecodeUtf8(folded).bytes;
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) {
  open_start_ = pattern.starts_with('%');
  open_end_ = pattern.ends_with('%');
  std::string folded;
  AppendFolded(folded, pattern);
  // Outside ASCII these fold to letters within: long s, dotted and dotless i, the Kelvin sign.
  has_foreign_ = folded.find_first_of("iks") != std::string::npos;
  plain_ascii_ = AllAscii(folded) && folded.find('_') == std::string::npos;
  for (const std::string_view bytes : Split(folded, '%')) {
    if (!bytes.empty()) AddPiece(std::string(bytes));
  }
}

void LikePattern::AddPiece(std::string bytes) {
  Piece piece;
  piece.has_any_one = bytes.find('_') != std::string::npos;
  const std::size_t last = bytes.size() - 1;
  const auto capped = [](std::size_t distance) {
    constexpr std::size_t kMost = std::numeric_limits<std::uint8_t>::max();
    return static_cast<std::uint8_t>(std::min(distance, kMost));
  };
  piece.skip.fill(capped(bytes.size()));
  for (std::size_t i = 0; i < last; ++i) {
    piece.skip[static_cast<unsigned char>(bytes[i])] = capped(last - i);
  }
  // An upper-case byte of the text moves us as its lower-case one does.
  for (std::size_t c = 'A'; c <= 'Z'; ++c) piece.skip[c] = piece.skip[c + 32];
  piece.bytes = std::move(bytes);
  pieces_.push_back(std::move(piece));
}

bool LikePattern::Matches(std::string_view text) {
  if (plain_ascii_ && !has_foreign_) return MatchesFolded(text);
  if (AllAscii(text)) return MatchesFolded(text);
  folded_.clear();
  AppendFolded(folded_, text);
  return MatchesFolded(folded_);
}

bool LikePattern::MatchesFolded(std::string_view text) const noexcept {
  if (pieces_.empty()) return open_start_ || text.empty();
  std::size_t at = 0;
  std::size_t first = 0;
  std::size_t last = pieces_.size();
  if (!open_start_) {
    at = EndOfMatchAt(pieces_.front(), text, 0);
    if (at == kNotFound) return false;
    if (last == 1) return open_end_ || at == text.size();
    ++first;
  }
  if (!open_end_) --last;
  // The leftmost place of each piece leaves the most room for the next: no way back is needed.
  for (std::size_t i = first; i < last; ++i) {
    at = EndOfFirst(pieces_[i], text, at);
    if (at == kNotFound) return false;
  }
  return open_end_ || MatchesAtEnd(pieces_.back(), text, at);
}

std::size_t LikePattern::EndOfMatchAt(const Piece& piece, std::string_view text,
                                      std::size_t at) noexcept {
  for (const char c : piece.bytes) {
    if (at >= text.size()) return kNotFound;
    if (c == '_') {
      at += FoldedCharacterBytes(text.substr(at));
    } else if (FoldedByte(text[at++]) != static_cast<unsigned char>(c)) {
      return kNotFound;
    }
  }
  return at;
}

std::size_t LikePattern::EndOfFirst(const Piece& piece, std::string_view text,
                                    std::size_t from) noexcept {
  if (piece.has_any_one) {
    while (from < text.size()) {
      const std::size_t end = EndOfMatchAt(piece, text, from);
      if (end != kNotFound) return end;
      from += FoldedCharacterBytes(text.substr(from));
    }
    return kNotFound;
  }
  const std::size_t size = piece.bytes.size();
  if (text.size() - from >= size + sizeof(ByteLanes)) {
    return EndOfFirstByLanes(piece.bytes, text, from);
  }
  const auto last = static_cast<unsigned char>(piece.bytes.back());
  for (std::size_t end = from + size; end <= text.size();) {
    const unsigned char under_last = FoldedByte(text[end - 1]);
    if (under_last == last && StandsAt(piece.bytes, text.data() + end - size)) return end;
    end += piece.skip[under_last];
  }
  return kNotFound;
}

bool LikePattern::MatchesAtEnd(const Piece& piece, std::string_view text,
                               std::size_t from) noexcept {
  if (!piece.has_any_one) {
    const std::size_t size = piece.bytes.size();
    return text.size() >= from + size &&
           EndOfMatchAt(piece, text, text.size() - size) == text.size();
  }
  for (; from < text.size(); from += FoldedCharacterBytes(text.substr(from))) {
    if (EndOfMatchAt(piece, text, from) == text.size()) return true;
  }
  return false;
}

}  // namespace tunemeadow
