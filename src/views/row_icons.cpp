// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/row_icons.h"

#include <algorithm>

#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kExtensionCharacters = 3;
/// Three characters of UTF-8 and the rest of a cut one before them.
constexpr std::size_t kEnoughBytes = 16;

std::string_view EndOfLocation(std::string_view location) noexcept {
  return location.substr(location.size() - std::min(location.size(), kEnoughBytes));
}

}  // namespace

std::string IconKey(std::string_view location) {
  std::string key = Upper(Right(EndOfLocation(location), kExtensionCharacters));
  return key == "MP3" ? "MP3O" : key;
}

void RowIcons::Add(std::string_view location) {
  const std::string_view end =
      location.substr(location.size() - std::min(location.size(), kExtensionCharacters));
  const bool ascii = AllAscii(end);
  if (ascii && end == last_ && !keys_.empty()) return;
  last_ = ascii ? end : std::string_view();
  std::string key = IconKey(location);
  if (std::find(keys_.begin(), keys_.end(), key) == keys_.end()) keys_.push_back(std::move(key));
}

}  // namespace tunemeadow
