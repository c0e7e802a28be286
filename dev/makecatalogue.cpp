// SPDX-License-Identifier: GPL-3.0-or-later
// makecatalogue SCHEMA FILE: makes a catalogue from the statements of SCHEMA. An existing FILE is
// replaced, but only by one that was made whole.
#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>

namespace {

/// Runs all statements on a fresh file; the description of the first failure, or "".
std::string MakeCatalogue(const std::string& path, const std::string& statements) {
  sqlite3* store = nullptr;
  char* message = nullptr;
  std::string failure;
  if (sqlite3_open(path.c_str(), &store) != SQLITE_OK ||
      sqlite3_exec(store, statements.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    failure = message != nullptr ? message : sqlite3_errmsg(store);
  }
  sqlite3_free(message);
  if (sqlite3_close(store) != SQLITE_OK && failure.empty()) failure = "cannot close the file";
  return failure;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "makecatalogue SCHEMA FILE\n";
    return 2;
  }
  std::ifstream schema(argv[1], std::ios::binary);
  const std::string statements{std::istreambuf_iterator<char>(schema), {}};
  const std::string unfinished = std::string(argv[2]) + ".new";
  std::error_code error;
  std::filesystem::remove(unfinished, error);
  std::string failure =
      statements.empty() ? "cannot read it" : MakeCatalogue(unfinished, statements);
  if (failure.empty()) {
    std::filesystem::rename(unfinished, argv[2], error);
    if (error) failure = error.message();
  }
  if (failure.empty()) return 0;
  std::cerr << "makecatalogue: " << argv[1] << ": " << failure << '\n';
  return 1;
}
