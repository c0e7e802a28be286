// SPDX-License-Identifier: GPL-3.0-or-later
// The order in which a person looks for texts: that of Unicode's root collation, whatever the
// locale. Accents stand beside their letters, capital and small letters are the same, punctuation
// comes before digits and digits before letters: "10", "abba", "Ärzte", "Édith", "Zappa".
#pragma once

#include <string>
#include <string_view>

namespace tunemeadow {

/// Appends the key of `text` (UTF-8) to `keys`. Keys compare as bytes, and those of texts that
/// differ in case alone are equal, as are those of the same character in one piece and in several.
/// A malformed byte comes after every character. What has no width, such as a control character,
/// decides nothing. The key of Latin text has about its length.
void AppendCollationKey(std::string& keys, std::string_view text);
[[nodiscard]] std::string CollationKey(std::string_view text);

/// Whether `left` stands before `right`. To sort many texts, make the key of each one once.
[[nodiscard]] bool CollatesBefore(std::string_view left, std::string_view right);

}  // namespace tunemeadow
