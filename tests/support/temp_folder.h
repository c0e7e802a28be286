// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of its own for each test, gone when the object goes.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>

namespace tunemeadow {

class TempFolder {
 public:
  TempFolder() : path_((std::filesystem::temp_directory_path() / "tunemeadow-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) ADD_FAILURE() << "no temporary folder " << path_;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  /// The folder, without a separator at its end.
  [[nodiscard]] const std::string& Path() const { return path_; }

  /// The path of `name` in the folder; nothing is made.
  [[nodiscard]] std::string Path(std::string_view name) const {
    return path_ + "/" + std::string(name);
  }

  /// Entries in the folder itself.
  [[nodiscard]] std::ptrdiff_t Count() const {
    return std::distance(std::filesystem::directory_iterator(path_), {});
  }

  /// Makes the file `name`, and the folders before it in that name. Returns its path.
  std::string Write(std::string_view name, std::string_view bytes = {}) const {
    std::string path = Path(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.good()) << path;
    return path;
  }

  /// All bytes of the file `name`; a missing one fails the test.
  [[nodiscard]] std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    EXPECT_TRUE(file.good()) << Path(name);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
  }

 private:
  std::string path_;
};

}  // namespace tunemeadow
