// SPDX-License-Identifier: GPL-3.0-or-later
// A fresh catalogue, as the build makes it, in a folder of its own. It holds the demonstration row.
// Test programs that use it add_dependencies(... catalogue).
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "store/database.h"
#include "support/temp_folder.h"

namespace tunemeadow {

/// Puts a copy of the template into the folder; its path.
inline std::string ProvideCatalogue(const TempFolder& folder, std::string_view name = "mp3s.mdb") {
  std::error_code error;
  std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", folder.Path(name), error);
  EXPECT_FALSE(error) << "no catalogue: " << error.message();
  return folder.Path(name);
}

/// A fresh catalogue, open. A statement that fails ends the test with an exception.
class TestCatalogue {
 public:
  TestCatalogue() : path(ProvideCatalogue(folder)) { connection.Open(path); }

  TempFolder folder;
  std::string path;
  Connection connection;

  CellTable Rows(std::string_view statement) { return connection.Execute(statement).GetRows(); }

  /// The first cell; "(none)" if there is no row.
  std::string Value(std::string_view statement) {
    const CellTable rows = Rows(statement);
    return rows.Empty() ? "(none)" : std::string(rows.Cell(0, 0));
  }

  /// The first column.
  std::vector<std::string> Values(std::string_view statement) {
    const CellTable rows = Rows(statement);
    std::vector<std::string> values;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) values.emplace_back(rows.Cell(row, 0));
    return values;
  }
};

}  // namespace tunemeadow
