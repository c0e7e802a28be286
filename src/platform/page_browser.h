// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tunemeadow {

/// Whether this machine has a program that shows pages of the help: one that the desktop associates
/// with them, the one that $BROWSER names, or one of the usual names.
[[nodiscard]] bool SomethingShowsPages();

}  // namespace tunemeadow
