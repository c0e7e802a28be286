// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/sort_keys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>

#include "core/collation.h"
#include "core/dates.h"
#include "core/numbers.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

// Keys of numbers are 16 characters of which 8 would nearly always be "00000000". So the first 16
// characters of a key are packed into 64 bits, four bits each, by a mapping that keeps their order:
// the characters of a number one to one, all others together below or above them. After a
// character that shares its code nothing is packed, since the difference may lie in it.
constexpr std::uint64_t kCodeBelow = 1;
constexpr std::uint64_t kCodePoint = 2;  // 3 is the slash
constexpr std::uint64_t kCodeZero = 4;
constexpr std::uint64_t kCodeAbove = 14;
constexpr int kPackedCharacters = 16;
constexpr int kWholeDigits = 10;
constexpr int kDecimals = 5;
constexpr double kScale = 1e5;
constexpr double kNumberLimit = 1e10;  ///< the first number that takes more than ten digits

constexpr std::uint64_t CodeOf(unsigned char c) noexcept {
  if (c < '.') return kCodeBelow;
  return c > '9' ? kCodeAbove : kCodePoint + (c - static_cast<unsigned>('.'));
}

std::uint64_t PackText(std::string_view key) noexcept {
  std::uint64_t packed = 0;
  int shift = 64;
  for (const char c : key.substr(0, kPackedCharacters)) {
    const std::uint64_t code = CodeOf(static_cast<unsigned char>(c));
    packed |= code << (shift -= 4);
    if (code == kCodeBelow || code == kCodeAbove) break;
  }
  return packed;
}

/// Packs the text "dddddddddd.ddddd" of a number that is given in units of its last decimal.
std::uint64_t PackNumber(std::uint64_t scaled) noexcept {
  std::uint64_t packed = kCodePoint << (4 * kDecimals);
  for (int place = 0; place < kWholeDigits + kDecimals; ++place, scaled /= 10) {
    packed |= (kCodeZero + scaled % 10) << (4 * (place + (place >= kDecimals ? 1 : 0)));
  }
  return packed;
}

std::string UnpackNumber(std::uint64_t packed) {
  std::string text;
  for (int shift = 60; shift >= 0; shift -= 4) {
    const std::uint64_t code = packed >> shift & 15;
    text += static_cast<char>('.' + static_cast<char>(code - kCodePoint));
  }
  return text;
}

/// The number of the cell in units of its fifth decimal, where its key has the fixed form.
std::optional<std::uint64_t> FixedForm(std::optional<double> value) noexcept {
  if (!value) return std::nullopt;
  const double scaled = std::round(*value * kScale);
  if (!(scaled >= 0 && scaled < kNumberLimit * kScale)) return std::nullopt;
  return static_cast<std::uint64_t>(scaled);
}

/// The key of a number that the fixed form does not hold: a negative or a very large one.
std::string LongNumberKey(double value) {
  const std::string digits = FormatFixed(std::abs(value), kDecimals);
  const std::size_t width = kWholeDigits + 1 + kDecimals;
  const std::string zeros(digits.size() < width ? width - digits.size() : 0, '0');
  return (value < 0 ? "-" : "") + zeros + digits;
}

/// What of a cell its kind looks at.
std::string_view RelevantPart(std::string_view cell, SortKind kind) noexcept {
  if (kind == SortKind::kLeadingNumber) return cell.substr(0, cell.find(' '));
  if (kind == SortKind::kSize && cell.ends_with("MB")) return cell.substr(0, cell.size() - 2);
  return cell;
}

std::optional<double> NumberOf(std::string_view part, SortKind kind) noexcept {
  const std::size_t colon = kind == SortKind::kTime ? part.find(':') : std::string_view::npos;
  if (colon == std::string_view::npos) return ParseNumber(part);
  const auto minutes = ParseNumber(part.substr(0, colon));
  const auto seconds = ParseNumber(part.substr(colon + 1));
  if (!minutes || !seconds) return std::nullopt;
  return *minutes * 60 + *seconds;
}

/// "yyyy/mm/dd hh:mm:ss"; nullopt if the cell is no date.
std::optional<std::string> DateKey(std::string_view cell) {
  constexpr std::string_view kForm = "0000-00-00 00:00:00";
  std::string key(cell);
  bool as_written_here = cell.size() == kForm.size();
  for (std::size_t i = 0; as_written_here && i < kForm.size(); ++i) {
    as_written_here = kForm[i] == '0' ? cell[i] >= '0' && cell[i] <= '9' : cell[i] == kForm[i];
  }
  // Days above 28 may not exist, and those texts are read with care.
  const bool plain = as_written_here && key.substr(0, 4) != "0000" && key.substr(5, 2) >= "01" &&
                     key.substr(5, 2) <= "12" && key.substr(8, 2) >= "01" &&
                     key.substr(8, 2) <= "28" && key.substr(11, 2) <= "23" && key[14] <= '5' &&
                     key[17] <= '5';
  if (!plain) {
    const auto moment = ParseDateTime(cell);
    if (!moment) return std::nullopt;
    key = DateTimeText(*moment);
  }
  std::replace(key.begin(), key.end(), '-', '/');
  return key;
}

void AppendFolded(std::string& buffer, std::string_view text) {
  const std::size_t begin = buffer.size();
  buffer.append(text);
  for (std::size_t i = begin; i < buffer.size(); ++i) {
    if (const char c = buffer[i]; (c & 0x80) == 0) {
      buffer[i] = LowerAscii(c);
    } else {
      text.remove_prefix(i - begin);
      buffer.resize(i);
      while (!text.empty()) {
        const CodePoint point = DecodeUtf8(text);
        AppendUtf8(buffer, FoldCase(point.value));
        text.remove_prefix(point.bytes);
      }
      return;
    }
  }
}

/// What a cell is sorted by: a number in fixed form, or a text.
struct CellKey {
  std::optional<std::uint64_t> fixed;  ///< in units of the fifth decimal
  std::string text;                    ///< where `fixed` is empty; not folded yet
};

CellKey KeyOfCell(std::string_view cell, SortKind kind) {
  if (cell.empty()) return {std::nullopt, std::string(cell)};
  if (kind == SortKind::kDate) return {std::nullopt, DateKey(cell).value_or(std::string(cell))};
  const std::string_view part = RelevantPart(cell, kind);
  const auto value = NumberOf(part, kind);
  if (const auto fixed = FixedForm(value)) return {fixed, {}};
  return {std::nullopt, value ? LongNumberKey(*value) : std::string(part)};
}

/// The keys of a column: 64 bits that decide most comparisons, and the texts for the others.
class KeyTable {
 public:
  struct Entry {
    std::uint64_t head;
    std::uint32_t row;
    std::uint32_t index;  ///< of its text; kFixedForm for a number that its head holds whole
  };

  KeyTable(SortKind kind, std::size_t rows) : kind_(kind) {
    entries_.reserve(rows);
    ends_.reserve(rows);
  }

  void Add(std::uint32_t row, std::string_view cell) {
    if (kind_ == SortKind::kText) {
      AppendCollationKey(buffer_, cell);
      entries_.push_back({0, row, EndText()});
      return;
    }
    const CellKey key = KeyOfCell(cell, kind_);
    if (key.fixed) {
      entries_.push_back({PackNumber(*key.fixed), row, kFixedForm});
    } else {
      AppendFolded(buffer_, key.text);
      const std::uint32_t index = EndText();
      entries_.push_back({PackText(Text(index)), row, index});
    }
  }

  /// The entries, heads of texts set.
  std::vector<Entry>& Finish() {
    if (kind_ != SortKind::kText) return entries_;
    // What all texts have in common decides nothing.
    const std::size_t common = CommonPrefix();
    for (Entry& entry : entries_) {
      std::string_view text = Text(entry.index).substr(common);
      for (int i = 0; i < 8; ++i) {
        const auto c = static_cast<std::size_t>(i) < text.size()
                           ? static_cast<unsigned char>(text[static_cast<std::size_t>(i)])
                           : 0U;
        entry.head = entry.head << 8 | c;
      }
    }
    return entries_;
  }

  [[nodiscard]] bool Less(const Entry& left, const Entry& right) const {
    if (left.head != right.head) return left.head < right.head;
    if (left.index == kFixedForm || right.index == kFixedForm) {
      return left.index != right.index && KeyOf(left) < KeyOf(right);
    }
    return Text(left.index) < Text(right.index);
  }

 private:
  static constexpr std::uint32_t kFixedForm = std::numeric_limits<std::uint32_t>::max();

  /// What the buffer holds after the texts so far is one more. Its index.
  std::uint32_t EndText() {
    ends_.push_back(buffer_.size());
    return static_cast<std::uint32_t>(ends_.size() - 1);
  }

  [[nodiscard]] std::string_view Text(std::uint32_t index) const noexcept {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(buffer_).substr(begin, ends_[index] - begin);
  }

  [[nodiscard]] std::string KeyOf(const Entry& entry) const {
    return entry.index == kFixedForm ? UnpackNumber(entry.head) : std::string(Text(entry.index));
  }

  [[nodiscard]] std::size_t CommonPrefix() const noexcept {
    if (ends_.empty()) return 0;
    std::string_view common = Text(0);
    for (std::uint32_t index = 1; index < ends_.size() && !common.empty(); ++index) {
      const std::string_view text = Text(index);
      const auto [end, unused] =
          std::mismatch(common.begin(), common.end(), text.begin(), text.end());
      common = common.substr(0, static_cast<std::size_t>(end - common.begin()));
    }
    return common.size();
  }

  SortKind kind_;
  std::vector<Entry> entries_;
  std::string buffer_;
  std::vector<std::size_t> ends_;
};

}  // namespace

std::string SortKey(std::string_view cell, SortKind kind) {
  if (kind == SortKind::kText) return CollationKey(cell);
  const CellKey key = KeyOfCell(cell, kind);
  if (key.fixed) return UnpackNumber(PackNumber(*key.fixed));
  std::string folded;
  AppendFolded(folded, key.text);
  return folded;
}

void SortOrder(std::vector<std::uint32_t>& order,
               const std::function<std::string_view(std::uint32_t)>& cell, SortKind kind,
               bool ascending) {
  KeyTable keys(kind, order.size());
  for (const std::uint32_t row : order) keys.Add(row, cell(row));
  std::vector<KeyTable::Entry>& entries = keys.Finish();
  using Entry = KeyTable::Entry;
  const auto before = [&](const Entry& one, const Entry& other) { return keys.Less(one, other); };
  const auto behind = [&](const Entry& one, const Entry& other) { return keys.Less(other, one); };
  if (ascending) {
    if (std::is_sorted(entries.begin(), entries.end(), before)) return;
    std::stable_sort(entries.begin(), entries.end(), before);
  } else {
    std::stable_sort(entries.begin(), entries.end(), behind);
  }
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = entries[i].row;
}

std::vector<std::string> SortedTexts(std::size_t count,
                                     const std::function<std::string_view(std::uint32_t)>& text) {
  std::vector<std::uint32_t> order(count);
  std::iota(order.begin(), order.end(), 0U);
  SortOrder(order, text, SortKind::kText, true);
  std::vector<std::string> sorted;
  sorted.reserve(count);
  for (const std::uint32_t place : order) sorted.emplace_back(text(place));
  return sorted;
}

}  // namespace tunemeadow
