// SPDX-License-Identifier: GPL-3.0-or-later
// Widths and places of the list's columns, as the settings keep them and the dialog of columns sets
// them.
#pragma once

#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "run/ini.h"
#include "views/list_columns.h"

namespace tunemeadow {

struct ColumnPlace {
  int width = 0;          ///< twips (1/1440 inch); 0: the column is hidden
  std::size_t place = 0;  ///< from 0, counted from the left
  bool operator==(const ColumnPlace&) const = default;
};

/// By column of the list. The places are those of 0 to 29, each once.
using ColumnLayout = std::array<ColumnPlace, kListColumns>;

[[nodiscard]] ColumnLayout StandardColumnLayout() noexcept;

/// The stored layout. A width or place that is missing or cannot be read is the standard one; two
/// columns of one place stand side by side. A decimal comma counts as a point.
[[nodiscard]] ColumnLayout ReadColumnLayout(
    std::span<const std::pair<std::string, std::string>> settings);
[[nodiscard]] ColumnLayout ReadColumnLayout(const cINI& ini);

/// What the settings keep of a layout: ColumnHeaderCount, then ColumnHeader1, ColumnHeaderPosition1
/// and so on, columns and places counted from 1.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> ColumnLayoutPairs(
    const ColumnLayout& layout);

/// Which entries of frmConfigureColumns are checked: the columns that are not hidden.
[[nodiscard]] std::array<bool, kListColumns> ShownColumns(const ColumnLayout& layout) noexcept;

/// OK of frmConfigureColumns: a checked column that was hidden gets its standard width, one that is
/// not checked the width 0.
void ShowColumns(ColumnLayout& layout, const std::array<bool, kListColumns>& checked) noexcept;

}  // namespace tunemeadow
