// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/file_urls.h"

#include <glib.h>

#include <optional>

#include "core/paths.h"
#include "core/text.h"
#include "platform/glib_owned.h"

namespace tunemeadow {
namespace {

/// The URL as it should have been: programs that write their own escapes leave some out.
std::string WithMissingEscapes(std::string_view url) {
  std::string whole;
  for (std::size_t i = 0; i < url.size(); ++i) {
    const bool is_escape =
        i + 2 < url.size() && g_ascii_isxdigit(url[i + 1]) && g_ascii_isxdigit(url[i + 2]);
    if (url[i] == '#') {
      whole += "%23";
    } else if (url[i] == '%' && !is_escape) {
      whole += "%25";
    } else {
      whole += url[i];
    }
  }
  return whole;
}

bool IsThisHost(const char* host) {
  return host == nullptr || EqualsNoCase(host, "localhost") ||
         EqualsNoCase(host, g_get_host_name());
}

std::optional<std::string> PathOfUrl(std::string_view url) {
  char* host = nullptr;
  const GlibText bytes(g_filename_from_uri(WithMissingEscapes(url).c_str(), &host, nullptr));
  const GlibText owned_host(host);
  if (bytes == nullptr || !IsThisHost(host)) return std::nullopt;
  std::string path = bytes.get();
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

std::string FileUrl(const std::string& path) {
  const GlibText working(g_get_current_dir());
  const std::string absolute = path.starts_with('/') ? path : JoinPath(working.get(), path);
  return GlibText(g_filename_to_uri(absolute.c_str(), nullptr, nullptr)).get();
}

std::string UriList(const std::vector<std::string>& paths) {
  std::string list;
  for (const std::string& path : paths) {
    if (path.starts_with('/')) list.append(FileUrl(path)).append("\r\n");
  }
  return list;
}

std::vector<std::string> PathsOfUriList(std::string_view list) {
  const GlibTexts urls(g_uri_list_extract_uris(std::string(list).c_str()));
  std::vector<std::string> paths;
  for (char** url = urls.get(); *url != nullptr; ++url) {
    if (auto path = PathOfUrl(*url)) paths.push_back(std::move(*path));
  }
  return paths;
}

}  // namespace tunemeadow
