// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace tunemeadow {

/// Another program's hold on the file.
class OtherProgram {
 public:
  OtherProgram(const std::string& path, const char* statements) {
    EXPECT_EQ(sqlite3_open(path.c_str(), &store_), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(store_, statements, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(store_);
  }
  ~OtherProgram() { sqlite3_close(store_); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

 private:
  sqlite3* store_ = nullptr;
};

}  // namespace tunemeadow
