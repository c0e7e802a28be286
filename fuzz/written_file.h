// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzz targets of the writers share: files in memory that are really written, with a
// journal in a folder of their own.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "audio/tag_writing.h"
#include "files/undo_journal.h"
#include "fuzz/fuzz_target.h"

namespace tunemeadow::fuzz {

/// The folder of the journal, in memory where the system has such a place.
class JournalFolder {
 public:
  JournalFolder() {
    if (::mkdtemp(path_.data()) == nullptr) path_ = "/tmp/fuzz-XXXXXX";
    if (path_.starts_with("/tmp")) Require(::mkdtemp(path_.data()) != nullptr, "a folder");
  }
  ~JournalFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  JournalFolder(const JournalFolder&) = delete;
  JournalFolder& operator=(const JournalFolder&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_ = "/dev/shm/fuzz-XXXXXX";
};

inline TagWriting& Writing() {
  static const JournalFolder folder;
  static UndoJournal journal(folder.Path());
  static TagWriting writing(journal);
  return writing;
}

inline std::string BytesOf(const std::string& path) {
  FileBytes file;
  Require(file.Open(path), "the written file can be read");
  return std::string(file.Read(0, static_cast<std::size_t>(file.Length())));
}

/// The next `count` bytes of an input, fewer at its end.
inline std::string_view TakeInput(std::string_view& input, std::size_t count) {
  const std::string_view taken = input.substr(0, count);
  input.remove_prefix(taken.size());
  return taken;
}

inline std::size_t TakeNumber(std::string_view& input) {
  const std::string_view byte = TakeInput(input, 1);
  return byte.empty() ? 0 : static_cast<std::uint8_t>(byte[0]);
}

}  // namespace tunemeadow::fuzz
