// SPDX-License-Identifier: GPL-3.0-or-later
// RepairDB.exe -i CATALOGUE -o COPY: makes a compacted copy of a catalogue, beside the running
// program. A blank in a path may be written as "%20".
//
// What the undo journals keep of files whose save was cut short:
//   RepairDB.exe list FOLDER             lists the journals in the program's folder
//   RepairDB.exe write JOURNAL FOLDER    writes the old files into another folder
//   RepairDB.exe drop JOURNAL            lets the old bytes go
//
// Exit codes: 0 done, 1 not done (the reason is on the standard error), 2 wrong arguments.
#include <iostream>
#include <string>
#include <string_view>

#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"
#include "repairdb/kept.h"
#include "store/compact_copy.h"

namespace {

using namespace std::string_view_literals;

/// The path as it stands, if there is such a file or folder; otherwise with its "%20" as blanks,
/// for a real "%20" in a name is as possible as a blank.
std::string PathOfArgument(const std::string& argument, bool folder_counts) {
  const std::string place =
      folder_counts ? std::string(tunemeadow::FolderPart(argument)) : argument;
  if (place.empty() || tunemeadow::MyFileExists(place)) return argument;
  return tunemeadow::ReplaceEach(argument, "%20", " ");
}

int MakeCopy(int argc, char** argv) {
  std::string source;
  std::string output;
  for (int i = 1; i + 1 < argc; i += 2) {
    if (argv[i] == "-i"sv) source = argv[i + 1];
    if (argv[i] == "-o"sv) output = argv[i + 1];
  }
  if (argc != 5 || source.empty() || output.empty()) {
    std::cerr << "RepairDB.exe -i CATALOGUE -o COPY\n"
                 "RepairDB.exe list FOLDER\n"
                 "RepairDB.exe write JOURNAL FOLDER\n"
                 "RepairDB.exe drop JOURNAL\n";
    return 2;
  }
  const std::string failure =
      tunemeadow::MakeCompactCopy(PathOfArgument(source, false), PathOfArgument(output, true));
  if (failure.empty()) return 0;
  std::cerr << "RepairDB.exe: " << failure << '\n';
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace tunemeadow;
  const std::string_view command = argc > 1 ? argv[1] : "";
  if (command == "list" && argc == 3) return repair::ListKept(argv[2]);
  if (command == "write" && argc == 4) return repair::WriteKept(argv[2], argv[3]);
  if (command == "drop" && argc == 3) return repair::DropKept(argv[2]);
  return MakeCopy(argc, argv);
}
