// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell_open.h"

#include <glib.h>

namespace tunemeadow {

bool IsUrl(std::string_view path_or_url) noexcept {
  if (path_or_url.starts_with("mailto:")) return true;
  const char* scheme = g_uri_peek_scheme(std::string(path_or_url).c_str());
  const std::size_t length = scheme == nullptr ? 0 : std::string_view(scheme).size();
  return length > 1 && path_or_url.substr(length).starts_with("://");
}

}  // namespace tunemeadow
