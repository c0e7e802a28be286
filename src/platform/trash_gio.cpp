// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/trash_gio.h"

#include <gio/gio.h>

#include <memory>

#include "platform/glib_owned.h"

namespace tunemeadow {
namespace {

/// "Failed" without more is how the library says that a volume lets nobody make a trash on it.
TrashOutcome OutcomeOf(const GError& error) noexcept {
  const bool has_none = error.domain == G_IO_ERROR &&
                        (error.code == G_IO_ERROR_NOT_SUPPORTED || error.code == G_IO_ERROR_FAILED);
  return has_none ? TrashOutcome::kNoTrash : TrashOutcome::kFailed;
}

}  // namespace

TrashAnswer GioTrash::MoveToTrash(const std::string& path) {
  // The plain file system: the desktop's own one would first load its modules and call its
  // services.
  const GlibObject<GFile> file(g_vfs_get_file_for_path(g_vfs_get_local(), path.c_str()));
  GError* error = nullptr;
  if (g_file_trash(file.get(), nullptr, &error) != FALSE) return {TrashOutcome::kMoved, {}};
  const std::unique_ptr<GError, void (*)(GError*)> owned(error, &g_error_free);
  return {OutcomeOf(*error), error->message};
}

}  // namespace tunemeadow
