// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/column_layout.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "core/numbers.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kWidthKey = "ColumnHeader";
constexpr std::string_view kPlaceKey = "ColumnHeaderPosition";
constexpr double kWidestColumn = 1440.0 * 100;  ///< a hundred inches: beyond lies a broken file

std::string NumberedKey(std::string_view key, std::size_t column) {
  return std::string(key) + std::to_string(column + 1);
}

/// The stored number, where it lies between 0 and `most`.
std::optional<double> StoredNumber(std::span<const std::pair<std::string, std::string>> settings,
                                   const std::string& key, double most) {
  for (const auto& [name, value] : settings) {
    if (!EqualsNoCase(name, key)) continue;
    const auto number = ParseNumber(value);
    return number && *number >= 0 && *number <= most ? number : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

ColumnLayout StandardColumnLayout() noexcept {
  ColumnLayout layout;
  for (std::size_t i = 0; i < layout.size(); ++i) layout[i] = {ListColumn(i).standard_width, i};
  return layout;
}

ColumnLayout ReadColumnLayout(std::span<const std::pair<std::string, std::string>> settings) {
  ColumnLayout layout = StandardColumnLayout();
  std::array<double, kListColumns> wanted{};
  for (std::size_t i = 0; i < layout.size(); ++i) {
    if (const auto width = StoredNumber(settings, NumberedKey(kWidthKey, i), kWidestColumn)) {
      layout[i].width = static_cast<int>(RoundHalfEven(*width));
    }
    const auto standard = static_cast<double>(i + 1);
    wanted[i] = StoredNumber(settings, NumberedKey(kPlaceKey, i), kListColumns).value_or(standard);
  }
  std::array<std::size_t, kListColumns> by_place{};
  std::iota(by_place.begin(), by_place.end(), std::size_t{0});
  std::stable_sort(by_place.begin(), by_place.end(),
                   [&](std::size_t a, std::size_t b) { return wanted[a] < wanted[b]; });
  for (std::size_t place = 0; place < by_place.size(); ++place) {
    layout[by_place[place]].place = place;
  }
  return layout;
}

ColumnLayout ReadColumnLayout(const cINI& ini) {
  return ReadColumnLayout(ini.ReadSection(kConfigSection));
}

std::vector<std::pair<std::string, std::string>> ColumnLayoutPairs(const ColumnLayout& layout) {
  std::vector<std::pair<std::string, std::string>> pairs;
  pairs.reserve(1 + 2 * layout.size());
  pairs.emplace_back("ColumnHeaderCount", std::to_string(layout.size()));
  for (std::size_t i = 0; i < layout.size(); ++i) {
    pairs.emplace_back(NumberedKey(kWidthKey, i), std::to_string(layout[i].width));
    pairs.emplace_back(NumberedKey(kPlaceKey, i), std::to_string(layout[i].place + 1));
  }
  return pairs;
}

std::array<bool, kListColumns> ShownColumns(const ColumnLayout& layout) noexcept {
  std::array<bool, kListColumns> shown{};
  for (std::size_t i = 0; i < layout.size(); ++i) shown[i] = layout[i].width != 0;
  return shown;
}

void ShowColumns(ColumnLayout& layout, const std::array<bool, kListColumns>& checked) noexcept {
  for (std::size_t i = 0; i < layout.size(); ++i) {
    if (!checked[i]) {
      layout[i].width = 0;
    } else if (layout[i].width == 0) {
      layout[i].width = ListColumn(i).standard_width;
    }
  }
}

}  // namespace tunemeadow
