// SPDX-License-Identifier: GPL-3.0-or-later
// The order of the rows of a list by one column. Each cell stands for a key. Texts have that of
// core/collation.h. In a column of another kind keys compare character by character without regard
// to case. A cell that its kind can read has one of fixed form, so that numbers, times and dates
// come into their own order; any other cell sorts among them as the text it is:
//
//   text                                 as a person looks for it
//   number, time, leading number, size   "0000000000.00000", halves away from zero
//   date                                 "yyyy/mm/dd hh:mm:ss"
//   empty                                empty: before everything else
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "views/list_columns.h"

namespace tunemeadow {

/// The key of one cell, as the order below sees it.
[[nodiscard]] std::string SortKey(std::string_view cell, SortKind kind);

/// Sorts `order`, whose entries are arguments of `cell`, by the keys of their cells. Equal keys
/// keep their order, whichever the direction. `cell` may hand out a view that lives until its next
/// call.
void SortOrder(std::vector<std::uint32_t>& order,
               const std::function<std::string_view(std::uint32_t)>& cell, SortKind kind,
               bool ascending);

/// The texts `text` hands out for 0 to `count` - 1, sorted as those of a list.
[[nodiscard]] std::vector<std::string> SortedTexts(
    std::size_t count, const std::function<std::string_view(std::uint32_t)>& text);

}  // namespace tunemeadow
