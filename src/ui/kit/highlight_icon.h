// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QStyleOptionViewItem>

namespace tunemeadow {

/// The icon of a selected row, in the colour of selected text: its own colours fade on the
/// highlight. One that fills its place keeps its colours.
[[nodiscard]] QIcon IconOnHighlight(const QStyleOptionViewItem& option);

}  // namespace tunemeadow
