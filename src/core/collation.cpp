// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/collation.h"

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/utypes.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/text.h"

namespace tunemeadow {
namespace {

// A key is the primary weights of the characters, which tell letters apart, and after kAccents
// their secondary ones, which tell accents apart. A weight is one byte or more, none of them zero,
// and no weight is the beginning of another: so keys compare as bytes. Most letters have the common
// secondary weight; those after the last accent are left out, and with no accent all of them.
constexpr char kAccents = 1;          ///< below every byte of a weight
constexpr char kCommonSecondary = 5;  ///< below every other secondary weight
constexpr char32_t kTableEnd = 0x500;

struct Weights {
  std::string primary, secondary;
};

void AppendBytes(std::string& bytes, std::uint32_t high, std::uint32_t low) {
  if (high != 0) bytes += static_cast<char>(static_cast<unsigned char>(high));
  if (low != 0) bytes += static_cast<char>(static_cast<unsigned char>(low));
}

class RootCollation {
 public:
  RootCollation() {
    UErrorCode status = U_ZERO_ERROR;
    collator_ = ucol_open("", &status);
    // Letters and their accents in one piece or in several, in any order.
    if (collator_ != nullptr)
      ucol_setAttribute(collator_, UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
  }

  /// Weights of a text in UTF-16, as the collation's own walk over it gives them. Not for a text
  /// with a byte that is malformed.
  void Append(const std::u16string& text, Weights& weights) const {
    UErrorCode status = U_ZERO_ERROR;
    UCollationElements* const elements =
        ucol_openElements(collator_, text.data(), static_cast<std::int32_t>(text.size()), &status);
    if (elements == nullptr) return;
    for (std::int32_t next = ucol_next(elements, &status); next != UCOL_NULLORDER;
         next = ucol_next(elements, &status)) {
      const auto element = static_cast<std::uint32_t>(next);
      AppendBytes(weights.primary, element >> 24, element >> 16 & 0xFF);
      AppendBytes(weights.secondary, 0, element >> 8 & 0xFF);
    }
    ucol_closeElements(elements);
  }

 private:
  UCollator* collator_ = nullptr;
};

const RootCollation& Root() {
  static const RootCollation root;
  return root;
}

/// The weights of one character that stands for itself wherever it is.
struct TableRow {
  static constexpr std::size_t kRoom = 4;  ///< bytes; two characters take more

  std::array<char, kRoom> primary{};
  std::uint8_t primary_bytes = 0;
  std::array<char, kRoom> secondary{};
  std::uint8_t secondary_bytes = 0;
  bool accented = false;  ///< has another secondary weight than the common one
  bool alone = false;     ///< false: the row holds nothing, as what stands beside it may count
};

/// Accents by themselves, and the two middle dots, which an "l" before them changes.
bool DependsOnNeighbours(char32_t c, const Weights& weights) {
  const bool is_mark = weights.primary.empty() && !weights.secondary.empty();
  return is_mark || c == 0xB7 || c == 0x387;
}

TableRow RowOf(char32_t c) {
  TableRow row;
  Weights weights;
  Root().Append(std::u16string(1, static_cast<char16_t>(c)), weights);
  const bool fits =
      weights.primary.size() <= TableRow::kRoom && weights.secondary.size() <= TableRow::kRoom;
  if (!fits || DependsOnNeighbours(c, weights)) return row;
  row.alone = true;
  weights.primary.copy(row.primary.data(), TableRow::kRoom);
  weights.secondary.copy(row.secondary.data(), TableRow::kRoom);
  row.primary_bytes = static_cast<std::uint8_t>(weights.primary.size());
  row.secondary_bytes = static_cast<std::uint8_t>(weights.secondary.size());
  row.accented = weights.secondary.find_first_not_of(kCommonSecondary) != std::string::npos;
  return row;
}

/// The rows of all characters below kTableEnd: Latin, Greek and Cyrillic letters.
const std::array<TableRow, kTableEnd>& Table() {
  static const std::array<TableRow, kTableEnd> table = [] {
    std::array<TableRow, kTableEnd> rows;
    for (char32_t c = 0; c < kTableEnd; ++c) rows[c] = RowOf(c);
    return rows;
  }();
  return table;
}

void AppendUtf16(std::u16string& text, char32_t c) {
  if (c < 0x10000) {
    text += static_cast<char16_t>(c);
  } else {
    text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
  }
}

/// Any text: what stands between malformed bytes goes through the collation itself.
Weights WeightsOf(std::string_view text) {
  Weights weights;
  std::u16string piece;
  const auto end_piece = [&] {
    if (!piece.empty()) Root().Append(piece, weights);
    piece.clear();
  };
  while (!text.empty()) {
    const CodePoint point = DecodeUtf8(text);
    text.remove_prefix(point.bytes);
    if (point.value < kMalformed) {
      AppendUtf16(piece, point.value);
      continue;
    }
    end_piece();
    weights.primary += '\xFF';
    weights.primary += static_cast<char>(static_cast<unsigned char>(point.value - kMalformed));
    weights.secondary += kCommonSecondary;
  }
  end_piece();
  return weights;
}

void AppendAccents(std::string& keys, std::string_view secondary) {
  const std::size_t last = secondary.find_last_not_of(kCommonSecondary);
  if (last == std::string_view::npos) return;
  keys += kAccents;
  keys.append(secondary.substr(0, last + 1));
}

/// The secondary weights of a text of which each character is alone.
void AppendAccentsByTable(std::string& keys, std::string_view text) {
  const auto& table = Table();
  std::string secondary;
  while (!text.empty()) {
    const CodePoint point = DecodeUtf8(text);
    text.remove_prefix(point.bytes);
    const TableRow& row = table[point.value];
    secondary.append(row.secondary.data(), row.secondary_bytes);
  }
  AppendAccents(keys, secondary);
}

/// False, `keys` as they were, where a character is not in the table or does not stand alone.
bool AppendByTable(std::string& keys, std::string_view text) {
  const auto& table = Table();
  const std::size_t old_size = keys.size();
  keys.resize(old_size + text.size() * TableRow::kRoom);
  char* to = keys.data() + old_size;
  bool accented = false;
  for (std::string_view rest = text; !rest.empty();) {
    const auto lead = static_cast<unsigned char>(rest.front());
    const CodePoint point = lead < 0x80 ? CodePoint{lead, 1} : DecodeUtf8(rest);
    if (point.value >= kTableEnd || !table[point.value].alone) {
      keys.resize(old_size);
      return false;
    }
    const TableRow& row = table[point.value];
    for (std::size_t i = 0; i < TableRow::kRoom; ++i) to[i] = row.primary[i];
    to += row.primary_bytes;
    accented |= row.accented;
    rest.remove_prefix(point.bytes);
  }
  keys.resize(static_cast<std::size_t>(to - keys.data()));
  if (accented) AppendAccentsByTable(keys, text);
  return true;
}

}  // namespace

void AppendCollationKey(std::string& keys, std::string_view text) {
  if (AppendByTable(keys, text)) return;
  const Weights weights = WeightsOf(text);
  keys.append(weights.primary);
  AppendAccents(keys, weights.secondary);
}

std::string CollationKey(std::string_view text) {
  std::string key;
  AppendCollationKey(key, text);
  return key;
}

bool CollatesBefore(std::string_view left, std::string_view right) {
  return CollationKey(left) < CollationKey(right);
}

}  // namespace tunemeadow
