// SPDX-License-Identifier: GPL-3.0-or-later
// File URLs (RFC 8089), alone and in lists as they travel between programs: text/uri-list
// (RFC 2483). Works on bytes, so that a name that is not UTF-8 arrives as it left.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// The URL of a local file: every byte of the path survives, "#", "?", "%" and those that are not
/// UTF-8 included. A relative path counts from the working folder.
[[nodiscard]] std::string FileUrl(const std::string& path);

/// One URL a line, each line ended by CR LF. Relative paths are left out.
[[nodiscard]] std::string UriList(const std::vector<std::string>& paths);

/// The paths of the local files in the list, in its order, without a trailing slash. Comments,
/// other schemes, other hosts and escaped NULs are left out; a "%" without two hexadecimal digits
/// after it stands for itself.
[[nodiscard]] std::vector<std::string> PathsOfUriList(std::string_view list);

}  // namespace tunemeadow
