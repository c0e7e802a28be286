// SPDX-License-Identifier: GPL-3.0-or-later
// Text helpers. Text is UTF-8; lengths, cuts and upper case count characters (code points), with a
// fast path for ASCII. Malformed bytes count as one character each and survive every function.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// Whether no byte is above 7F, so that bytes are characters.
[[nodiscard]] bool AllAscii(std::string_view text) noexcept;

/// Number of characters.
[[nodiscard]] std::size_t Length(std::string_view text) noexcept;

/// The first `count` characters, or all of them.
[[nodiscard]] std::string_view Left(std::string_view text, std::size_t count) noexcept;

/// The last `count` characters, or all of them.
[[nodiscard]] std::string_view Right(std::string_view text, std::size_t count) noexcept;

/// `count` characters from `start` (from 1) on; less where the text ends, none after its end.
[[nodiscard]] std::string_view Mid(std::string_view text, std::size_t start,
                                   std::size_t count = std::string_view::npos) noexcept;

/// Cuts blanks (U+0020 only) at both ends, or at one.
[[nodiscard]] std::string_view Trim(std::string_view text) noexcept;
[[nodiscard]] std::string_view TrimLeft(std::string_view text) noexcept;
[[nodiscard]] std::string_view TrimRight(std::string_view text) noexcept;

/// Upper and lower case of each character by the simple mappings of Unicode: one character stays
/// one character ("ß" stays "ß").
[[nodiscard]] std::string Upper(std::string_view text);
[[nodiscard]] std::string Lower(std::string_view text);

/// The case of A to Z only, byte for byte: positions in the result are positions in the text.
[[nodiscard]] std::string UpperAscii(std::string_view text);
[[nodiscard]] constexpr char UpperAscii(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
[[nodiscard]] constexpr char LowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

/// Equality without regard to the case of ASCII letters.
[[nodiscard]] bool EqualsNoCase(std::string_view left, std::string_view right) noexcept;

/// Byte position of `part` in `text` without regard to the case of ASCII letters, or npos.
[[nodiscard]] std::size_t FindNoCase(std::string_view text, std::string_view part,
                                     std::size_t from = 0) noexcept;
[[nodiscard]] bool EndsWithNoCase(std::string_view text, std::string_view end) noexcept;

/// Each blank-separated word gets an upper-case first letter; the rest of it stays as it is, and so
/// do runs of blanks. Two letters that a tag can hold have capitals that it cannot, "µ" and "ƒ":
/// they stay as they are.
[[nodiscard]] std::string Capitalize(std::string_view text);

/// Removes every NUL character, then blanks at both ends. All tag text passes through it before it
/// reaches a statement.
[[nodiscard]] std::string StripNulls(std::string_view text);

/// Replaces each occurrence of `what`, from left to right, never looking at replaced text again.
/// An empty `what` leaves the text alone.
[[nodiscard]] std::string ReplaceEach(std::string_view text, std::string_view what,
                                      std::string_view with);

/// The pieces between the separators; one more than there are separators, empty ones included.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, char separator);

/// One character of UTF-8, decoded. A malformed byte decodes to kMalformed + the byte.
struct CodePoint {
  char32_t value;
  std::size_t bytes;
};
inline constexpr char32_t kMalformed = 0x110000;
[[nodiscard]] CodePoint DecodeUtf8(std::string_view text) noexcept;  ///< `text` must not be empty
void AppendUtf8(std::string& text, char32_t character);

/// Simple case folding for comparisons: lower case of the upper case.
[[nodiscard]] char32_t FoldCase(char32_t character) noexcept;

/// Malformed bytes replaced by U+FFFD, so that the text can be shown.
[[nodiscard]] std::string ToValidUtf8(std::string_view bytes);

}  // namespace tunemeadow
