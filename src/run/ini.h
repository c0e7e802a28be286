// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file: sections in brackets, lines of key, equals sign and value. Keys and sections
// match without regard to the case of ASCII letters. Nothing is cached: each call reads the file.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunemeadow {

class cINI {
 public:
  /// A settings file at `path`; it need not exist.
  explicit cINI(std::string path) : path_(std::move(path)) {}

  /// Value of a key, cut to 255 characters; `standard` where the key is missing or empty.
  /// `kind` 0: the text. 1: a boolean; an empty `standard` counts as "True", and a value that is
  /// neither "TRUE" nor "FALSE" in any case gives `standard`. 2: a number; a value whose numeric
  /// reading is zero gives `standard`. A file that cannot be read is like an empty one.
  [[nodiscard]] std::string GetString(std::string_view section, std::string_view key,
                                      std::string_view standard, int kind) const;

  /// Writes one value through at once; 1, or 0 where it failed and the file is as before. The value
  /// ends at its first line break. The file is replaced whole: new file, sync, rename over the old
  /// one; unknown sections, keys and comments stay.
  int SaveString(std::string_view section, std::string_view key, std::string_view value);

  /// SaveString for many keys of one section with a single replacement of the file.
  int SaveStrings(std::string_view section,
                  const std::vector<std::pair<std::string, std::string>>& values);

  /// Every key and value of a section in one read, in file order, values cut to 255 characters;
  /// of a key that stands twice the first.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> ReadSection(
      std::string_view section) const;

  [[nodiscard]] const std::string& Path() const noexcept { return path_; }

 private:
  std::string path_;
};

/// The section that holds every key.
inline constexpr std::string_view kConfigSection = "CONFIG";

}  // namespace tunemeadow
