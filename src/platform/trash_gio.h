// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/trash.h"

namespace tunemeadow {

/// The trash of the desktop (freedesktop.org trash 1.0): of the home folder's volume in
/// $XDG_DATA_HOME/Trash, of any other in a folder at its root. A folder that is missing is made.
/// The volumes of the system itself, in memory or without a person's files, have none.
class GioTrash : public Trash {
 public:
  TrashAnswer MoveToTrash(const std::string& path) override;
};

}  // namespace tunemeadow
