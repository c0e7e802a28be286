// SPDX-License-Identifier: GPL-3.0-or-later
#include "repairdb/kept.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iostream>

#include "core/paths.h"
#include "files/descriptor.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "files/instance_lock.h"
#include "files/kept_journals.h"

namespace tunemeadow::repair {
namespace {

int Fail(const std::string& what) {
  std::cerr << "RepairDB.exe: " << what << '\n';
  return 1;
}

std::string FolderOf(const std::string& journal) {
  const std::size_t name = journal.rfind('/') + 1;  // npos + 1 is 0
  return name == 0 ? "./" : journal.substr(0, name);
}

/// The journal of this path, if it is one that may be read or removed; otherwise nullptr.
const KeptJournal* Find(const std::vector<KeptJournal>& journals, const std::string& path) {
  const auto found = std::find_if(journals.begin(), journals.end(), [&](const KeptJournal& kept) {
    return FileNamePart(kept.path) == FileNamePart(path);
  });
  return found == journals.end() ? nullptr : &*found;
}

std::string_view StateText(KeptFile::State state) {
  switch (state) {
    case KeptFile::State::kMissing:
      return "the file is missing";
    case KeptFile::State::kOld:
      return "the file holds them";
    case KeptFile::State::kOther:
      break;
  }
  return "the file has changed";
}

/// A path in the folder that is free: the name itself, or "name (2).mp3" and so on.
std::string FreePath(const std::string& folder, const std::string& path) {
  const std::string name(FileNamePart(path));
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  std::string free = JoinPath(folder, name);
  for (int number = 2; MyFileExists(free); ++number) {
    free = JoinPath(folder,
                    name.substr(0, dot) + " (" + std::to_string(number) + ")" + name.substr(dot));
  }
  return free;
}

}  // namespace

int ListKept(const std::string& folder) {
  if (!IsDirectory(folder)) return Fail(folder + ": no such folder");
  const std::vector<KeptJournal> journals = KeptJournals(folder);
  if (journals.empty()) std::cout << "No old bytes are kept.\n";
  for (const KeptJournal& journal : journals) {
    std::cout << journal.path
              << (journal.waiting ? ": restored at the next start that reaches the files\n"
                                  : ": kept, since the files have changed\n");
    if (journal.files.empty()) std::cout << "  cannot be read\n";
    for (const KeptFile& file : journal.files) {
      std::cout << "  " << DisplayPath(file.path) << ": " << file.kept_bytes << " of "
                << file.length << " old bytes; " << StateText(file.state) << '\n';
    }
  }
  return 0;
}

int WriteKept(const std::string& journal, const std::string& folder) {
  if (!IsDirectory(folder)) return Fail(folder + ": no such folder");
  const std::vector<KeptJournal> journals = KeptJournals(FolderOf(journal));
  const KeptJournal* const kept = Find(journals, journal);
  if (kept == nullptr || kept->files.empty()) return Fail(journal + ": no journal with old bytes");
  int code = 0;
  for (const KeptFile& file : kept->files) {
    const std::string to = FreePath(folder, file.path);
    std::int64_t borrowed = 0;
    const std::string fault = WriteOldFile(kept->path, file.path, to, borrowed);
    if (!fault.empty()) {
      code = Fail(DisplayPath(file.path) + ": " + fault);
      continue;
    }
    std::cout << DisplayPath(to) << ": written";
    if (borrowed > 0 && file.state == KeptFile::State::kMissing) {
      std::cout << "; " << borrowed << " bytes are lost with the file and are zero";
    } else if (borrowed > 0) {
      std::cout << "; " << borrowed << " bytes are those of the file as it is now";
    }
    std::cout << '\n';
  }
  return code;
}

int DropKept(const std::string& journal) {
  const std::string folder = FolderOf(journal);
  const std::vector<KeptJournal> journals = KeptJournals(folder);
  const KeptJournal* const kept = Find(journals, journal);
  if (kept == nullptr) return Fail(journal + ": no journal with old bytes");
  InstanceLock lock(folder);
  if (kept->waiting && !lock.TryLock()) return Fail("the program is running; leave it first");
  if (unlink(kept->path.c_str()) != 0) return Fail(SystemFault(journal, errno));
  SyncFolderOf(kept->path);
  return 0;
}

}  // namespace tunemeadow::repair
