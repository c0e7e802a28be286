// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/program_path.h"

#include <glib.h>

#include <cstdlib>
#include <memory>

#include "core/paths.h"
#include "platform/glib_owned.h"

namespace tunemeadow {
namespace {

/// Whether $PATH names the working folder by an empty entry.
bool PathHasEmptyEntry() {
  const char* path = g_getenv("PATH");
  return path != nullptr && (":" + std::string(path) + ":").find("::") != std::string::npos;
}

}  // namespace

std::string RealPath(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), &std::free);
  return real == nullptr ? path : std::string(real.get());
}

std::string ProgramPath(const std::string& name) {
  const GlibText found(g_find_program_in_path(name.c_str()));
  if (found == nullptr) return {};
  if (name.find('/') != std::string::npos) return found.get();
  // The working folder may be anybody's, and is no place to find a player in.
  const GlibText working(g_get_current_dir());
  if (PathHasEmptyEntry() && found.get() == JoinPath(working.get(), name)) return {};
  return found.get();
}

}  // namespace tunemeadow
