// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop_entry.h"

namespace tunemeadow {
namespace {

std::string_view TrimDesktopText(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// The escapes of every text value: \s \n \t \r and the doubled backslash.
std::string WithoutValueEscapes(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    const char escaped = value[++i];
    switch (escaped) {
      case 's':
        text += ' ';
        break;
      case 'n':
        text += '\n';
        break;
      case 't':
        text += '\t';
        break;
      case 'r':
        text += '\r';
        break;
      case '\\':
        text += '\\';
        break;
      default:
        text.append({'\\', escaped});
    }
  }
  return text;
}

/// Cuts a command at its blanks. Within double quotes a backslash keeps the next character.
std::vector<std::string> SplitCommand(std::string_view command) {
  std::vector<std::string> words;
  bool is_quoted = false;
  bool in_word = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    const char c = command[i];
    if (!is_quoted && (c == ' ' || c == '\t' || c == '\n')) {
      in_word = false;
      continue;
    }
    if (!in_word) words.emplace_back();
    in_word = true;
    if (c == '"') {
      is_quoted = !is_quoted;
    } else if (is_quoted && c == '\\' && i + 1 < command.size()) {
      words.back() += command[++i];
    } else {
      words.back() += c;
    }
  }
  return words;
}

/// The word without its field codes; "%%" is a percent sign.
std::string WithoutFieldCodes(std::string_view word) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%') {
      text += word[i];
    } else if (++i < word.size() && word[i] == '%') {
      text += '%';
    }
  }
  return text;
}

}  // namespace

std::string_view DesktopValue(std::string_view text, std::string_view group,
                              std::string_view key) noexcept {
  bool inside = false;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = TrimDesktopText(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[') {
      if (inside) return {};
      inside = line.substr(1, line.find(']') - 1) == group;
      continue;
    }
    const std::size_t equals = line.find('=');
    if (inside && equals != std::string_view::npos &&
        TrimDesktopText(line.substr(0, equals)) == key) {
      return TrimDesktopText(line.substr(equals + 1));
    }
  }
  return {};
}

std::vector<std::string> ExecWords(std::string_view exec) {
  std::vector<std::string> words;
  for (const std::string& word : SplitCommand(WithoutValueEscapes(exec))) {
    std::string text = WithoutFieldCodes(word);
    if (!text.empty()) words.push_back(std::move(text));
  }
  return words;
}

}  // namespace tunemeadow
