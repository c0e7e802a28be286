// SPDX-License-Identifier: GPL-3.0-or-later
// Paths are bytes, handed to the system as they are. This is the only place that knows separators:
// a path that holds a "/" is separated by "/", any other by "\". So "/music/AC\DC.mp3" is one file
// name, and "CD07\Rock\a.mp3" still splits.
#pragma once

#include <string>
#include <string_view>

namespace tunemeadow {

/// '/' or '\\', by the rule above. A text without either is separated by '/'.
[[nodiscard]] char SeparatorOf(std::string_view path) noexcept;

/// The part after the last separator; all of it if there is none.
[[nodiscard]] std::string_view FileNamePart(std::string_view path) noexcept;

/// The part before the file name, with its trailing separator; empty if there is none.
[[nodiscard]] std::string_view FolderPart(std::string_view path) noexcept;

/// The text after the last "." of the file name; empty if there is none.
[[nodiscard]] std::string_view ExtensionPart(std::string_view path) noexcept;

/// The folder with one separator at its end. An empty folder stays empty.
[[nodiscard]] std::string WithTrailingSeparator(std::string_view folder);

/// Folder and name with one separator between them.
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name);

/// The path as a person may see it: bytes that are not UTF-8 become U+FFFD. Never opened.
[[nodiscard]] std::string DisplayPath(std::string_view path);

/// Whether the path ends in "." and the extension, without regard to case: ("x.Mp3", "mp3").
/// The comparison takes the last four characters, so only extensions of three letters ever match.
[[nodiscard]] bool HasExtension(std::string_view path, std::string_view extension) noexcept;

/// Whether HasExtension holds for one entry of a ";"-separated list.
[[nodiscard]] bool HasOneOfExtensions(std::string_view path, std::string_view extensions) noexcept;

}  // namespace tunemeadow
