// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/paths.h"

#include "core/text.h"

namespace tunemeadow {
namespace {

/// Bytes before the file name.
std::size_t FolderLength(std::string_view path) noexcept {
  return path.rfind(SeparatorOf(path)) + 1;  // npos + 1 is 0
}

}  // namespace

char SeparatorOf(std::string_view path) noexcept {
  if (path.find('/') != std::string_view::npos) return '/';
  return path.find('\\') != std::string_view::npos ? '\\' : '/';
}

std::string_view FileNamePart(std::string_view path) noexcept {
  return path.substr(FolderLength(path));
}

std::string_view FolderPart(std::string_view path) noexcept {
  return path.substr(0, FolderLength(path));
}

std::string_view ExtensionPart(std::string_view path) noexcept {
  const std::string_view name = FileNamePart(path);
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

std::string WithTrailingSeparator(std::string_view folder) {
  std::string result(folder);
  if (!result.empty() && result.back() != SeparatorOf(folder)) result += SeparatorOf(folder);
  return result;
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  return WithTrailingSeparator(folder).append(name);
}

std::string DisplayPath(std::string_view path) { return ToValidUtf8(path); }

bool HasExtension(std::string_view path, std::string_view extension) noexcept {
  return path.size() > extension.size() && path[path.size() - extension.size() - 1] == '.' &&
         Length(extension) == 3 && EndsWithNoCase(path, extension);
}

bool HasOneOfExtensions(std::string_view path, std::string_view extensions) noexcept {
  for (;;) {
    const std::size_t end = extensions.find(';');
    if (HasExtension(path, extensions.substr(0, end))) return true;
    if (end == std::string_view::npos) return false;
    extensions.remove_prefix(end + 1);
  }
}

}  // namespace tunemeadow
