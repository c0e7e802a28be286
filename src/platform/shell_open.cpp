// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell_open.h"

#include <unistd.h>

#include <climits>

#include "core/paths.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

bool IsLetterOrDigit(char c) noexcept {
  return (c >= '0' && c <= '9') || (UpperAscii(c) >= 'A' && UpperAscii(c) <= 'Z');
}

}  // namespace

bool IsUrl(std::string_view path_or_url) noexcept {
  if (path_or_url.starts_with("mailto:")) return true;
  const std::string_view scheme = path_or_url.substr(0, path_or_url.find("://"));
  if (scheme.size() < 2 || scheme.size() == path_or_url.size()) return false;
  for (const char c : scheme) {
    if (!IsLetterOrDigit(c) && c != '+' && c != '-' && c != '.') return false;
  }
  return scheme.front() > '9';
}

std::string FileUrl(const std::string& path) {
  std::string absolute = path;
  if (!path.starts_with('/')) {
    std::string working(PATH_MAX, '\0');
    if (getcwd(working.data(), working.size()) == nullptr) return {};
    absolute = std::string(working.c_str()) + "/" + path;
  }
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string url = "file://";
  for (const char c : absolute) {
    if (IsLetterOrDigit(c) || c == '/' || c == '-' || c == '.' || c == '_' || c == '~') {
      url += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    url.append({'%', kHex[byte >> 4], kHex[byte & 15]});
  }
  return url;
}

}  // namespace tunemeadow
