// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ini.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <unordered_set>

#include "core/numbers.h"
#include "core/text.h"
#include "files/durable_file.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kLongestValue = 255;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

using IniValues = std::vector<std::pair<std::string, std::string>>;

/// Blanks and tabs off both ends.
std::string_view TrimIniName(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// One line of the file, its parts being views of it.
struct IniLine {
  enum class Kind { kOther, kSection, kKey };
  Kind kind = Kind::kOther;
  std::string_view name;   ///< of the section or the key, trimmed
  std::string_view value;  ///< of the key: everything after the "=" up to the line end
};

IniLine ReadIniLine(std::string_view line) noexcept {
  const std::string_view trimmed = TrimIniName(line);
  if (trimmed.empty() || trimmed.front() == ';') return {};
  if (trimmed.front() == '[') {
    return {IniLine::Kind::kSection, TrimIniName(trimmed.substr(1, trimmed.find(']') - 1)), {}};
  }
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {};
  return {IniLine::Kind::kKey, TrimIniName(line.substr(0, equals)), line.substr(equals + 1)};
}

/// Takes the next line off `text`, without its line end.
std::string_view TakeIniLine(std::string_view& text) noexcept {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
  return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

/// Calls `take(line)` for each key line of every section of that name.
template <typename Take>
void ForEachKey(std::string_view text, std::string_view section, Take take) {
  text = WithoutByteOrderMark(text);
  for (bool inside = false; !text.empty();) {
    const IniLine line = ReadIniLine(TakeIniLine(text));
    if (line.kind == IniLine::Kind::kSection) inside = EqualsNoCase(line.name, section);
    if (line.kind == IniLine::Kind::kKey && inside) take(line);
  }
}

/// Where the value of a key stands in the text; nullopt if the section has no such key.
std::optional<std::string_view> FindIniValue(std::string_view text, std::string_view section,
                                             std::string_view key) {
  std::optional<std::string_view> found;
  ForEachKey(text, section, [&](const IniLine& line) {
    if (!found && EqualsNoCase(line.name, key)) found = line.value;
  });
  return found;
}

/// Offset after the last line of the first section of that name that is not blank; nullopt if
/// there is no such section.
std::optional<std::size_t> EndOfIniSection(std::string_view text, std::string_view section) {
  std::optional<std::size_t> end;
  std::string_view rest = WithoutByteOrderMark(text);
  while (!rest.empty()) {
    const std::string_view line = TakeIniLine(rest);
    const IniLine parts = ReadIniLine(line);
    if (parts.kind == IniLine::Kind::kSection) {
      if (end) break;
      if (!EqualsNoCase(parts.name, section)) continue;
    } else if (!end || TrimIniName(line).empty()) {
      continue;
    }
    end = text.size() - rest.size();
  }
  return end;
}

/// A name that, written, is read as that name again.
bool IsIniName(std::string_view name) noexcept {
  return !name.empty() && TrimIniName(name) == name && name.front() != ';' && name.front() != '[' &&
         name.find_first_of("=]\r\n") == std::string_view::npos;
}

/// The text with one key set. All other bytes stay.
void SetIniValue(std::string& text, std::string_view section, std::string_view key,
                 std::string_view value) {
  value = value.substr(0, value.find_first_of("\r\n"));
  if (const auto old = FindIniValue(text, section, key)) {
    const auto offset = static_cast<std::size_t>(old->data() - text.data());
    text.replace(offset, old->size(), value);
    return;
  }
  const std::size_t first_end = text.find('\n');
  const std::string_view line_end =
      first_end != std::string::npos && first_end > 0 && text[first_end - 1] == '\r' ? "\r\n"
                                                                                     : "\n";
  std::string added;
  std::optional<std::size_t> at = EndOfIniSection(text, section);
  if (!at) {
    at = text.size();
    added.append("[").append(section).append("]").append(line_end);
  }
  added.append(key).append("=").append(value).append(line_end);
  const bool open_line = *at > 0 && text[*at - 1] != '\n' && text != kByteOrderMark;
  if (open_line) added.insert(0, text[*at - 1] == '\r' ? "\n" : line_end);
  text.insert(*at, added);
}

}  // namespace

std::string cINI::GetString(std::string_view section, std::string_view key,
                            std::string_view standard, int kind) const {
  if (kind == 1 && standard.empty()) standard = "True";
  const std::string text = ReadWholeFile(path_).value_or(std::string());
  const std::string_view value =
      Left(FindIniValue(text, section, key).value_or(std::string_view()), kLongestValue);
  const bool is_unusable =
      value.empty() ||
      (kind == 1 && !EqualsNoCase(value, "TRUE") && !EqualsNoCase(value, "FALSE")) ||
      (kind == 2 && LeadingNumber(value) == 0);
  return std::string(is_unusable ? standard : value);
}

int cINI::SaveString(std::string_view section, std::string_view key, std::string_view value) {
  return SaveStrings(section, {{std::string(key), std::string(value)}});
}

int cINI::SaveStrings(std::string_view section, const IniValues& values) {
  const bool names_fit =
      IsIniName(section) && std::all_of(values.begin(), values.end(),
                                        [](const auto& entry) { return IsIniName(entry.first); });
  if (!names_fit) return 0;
  const std::optional<std::string> old = ReadWholeFile(path_);
  if (!old) {
    // What cannot be read must not be replaced by the few keys of this call.
    struct stat status {};
    if (stat(path_.c_str(), &status) == 0 || errno != ENOENT) return 0;
  }
  std::string text = old.value_or(std::string());
  for (const auto& [key, value] : values) SetIniValue(text, section, key, value);
  if (old == text) return 1;
  return ReplaceFile(path_, text) ? 1 : 0;
}

IniValues cINI::ReadSection(std::string_view section) const {
  IniValues values;
  std::unordered_set<std::string> known;
  const std::string text = ReadWholeFile(path_).value_or(std::string());
  ForEachKey(text, section, [&](const IniLine& line) {
    if (known.insert(UpperAscii(line.name)).second) {
      values.emplace_back(line.name, Left(line.value, kLongestValue));
    }
  });
  return values;
}

}  // namespace tunemeadow
