// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/mdl_ID3.h"

#include <cstring>
#include <string_view>

namespace tunemeadow {

bool ReadID3v1Tag(FileBytes& file, ID3v1Tag& tag) {
  const std::string_view record =
      file.Read(file.Length() - static_cast<std::int64_t>(sizeof tag), sizeof tag);
  if (record.size() != sizeof tag || !record.starts_with("TAG")) return false;
  std::memcpy(&tag, record.data(), sizeof tag);
  return true;
}

bool ReadID3v1Tag(const std::string& path, ID3v1Tag& tag) {
  FileBytes file;
  return file.Open(path) && ReadID3v1Tag(file, tag);
}

}  // namespace tunemeadow
