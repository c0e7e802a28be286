// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/file_uris.h"

#include <unistd.h>

#include <array>
#include <optional>

#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kFileScheme = "file:";
constexpr std::size_t kLongestHostName = 256;

bool IsPlainInUri(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("-._~/").find(c) != std::string_view::npos;
}

/// Value of the two hexadecimal digits at the head of the text.
std::optional<char> HexByte(std::string_view digits) noexcept {
  if (digits.size() < 2) return std::nullopt;
  const std::size_t high = kHexDigits.find(UpperAscii(digits[0]));
  const std::size_t low = kHexDigits.find(UpperAscii(digits[1]));
  if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
  return static_cast<char>(static_cast<unsigned char>(high * 16 + low));
}

/// A "%" that no two digits follow stands for itself.
std::string Unescaped(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = text[i] == '%' ? HexByte(text.substr(i + 1)) : std::nullopt;
    bytes += byte.value_or(text[i]);
    if (byte) i += 2;
  }
  return bytes;
}

bool IsThisHost(std::string_view host) {
  if (host.empty() || EqualsNoCase(host, "localhost")) return true;
  std::array<char, kLongestHostName> name{};
  return gethostname(name.data(), name.size() - 1) == 0 && EqualsNoCase(host, name.data());
}

std::optional<std::string> PathOfUri(std::string_view uri) {
  if (!EqualsNoCase(uri.substr(0, kFileScheme.size()), kFileScheme)) return std::nullopt;
  uri.remove_prefix(kFileScheme.size());
  if (uri.substr(0, 2) == "//") {
    uri.remove_prefix(2);
    const std::size_t slash = uri.find('/');
    if (slash == std::string_view::npos || !IsThisHost(uri.substr(0, slash))) return std::nullopt;
    uri.remove_prefix(slash);
  }
  std::string path = Unescaped(uri);
  if (path.empty() || path[0] != '/' || path.find('\0') != std::string::npos) return std::nullopt;
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

std::string FileUri(std::string_view path) {
  if (path.empty() || path[0] != '/') return {};
  std::string uri = "file://";
  for (const char c : path) {
    if (IsPlainInUri(c)) {
      uri += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      uri += {'%', kHexDigits[byte / 16U], kHexDigits[byte % 16U]};
    }
  }
  return uri;
}

std::string UriList(const std::vector<std::string>& paths) {
  std::string list;
  for (const std::string& path : paths) {
    const std::string uri = FileUri(path);
    if (!uri.empty()) list.append(uri).append("\r\n");
  }
  return list;
}

std::vector<std::string> PathsOfUriList(std::string_view list) {
  std::vector<std::string> paths;
  for (std::string_view line : Split(list, '\n')) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\0')) line.remove_suffix(1);
    line = Trim(line);
    if (line.empty() || line[0] == '#') continue;
    if (auto path = PathOfUri(line)) paths.push_back(std::move(*path));
  }
  return paths;
}

}  // namespace tunemeadow
