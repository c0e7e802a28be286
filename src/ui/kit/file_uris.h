// SPDX-License-Identifier: GPL-3.0-or-later
// File lists as they travel between programs: text/uri-list (RFC 2483) with file URIs (RFC 8089).
// Works on bytes, so that a name that is not UTF-8 arrives as it left.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// "file://" and the path, with everything escaped but letters, digits and -._~/ . Empty for a path
/// that does not start with "/": no URI names it.
[[nodiscard]] std::string FileUri(std::string_view path);

/// One URI a line, each line ended by CR LF. Paths without a URI are left out.
[[nodiscard]] std::string UriList(const std::vector<std::string>& paths);

/// The paths of the local files in the list, in its order, without a trailing slash. Comments,
/// other schemes, other hosts and escaped NULs are left out.
[[nodiscard]] std::vector<std::string> PathsOfUriList(std::string_view list);

}  // namespace tunemeadow
