#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

// What somebody does to the file by means of their own.
inline void plant(const std::string& path, const std::string& statements) {
  sqlite3* file = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(file, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(file);
  sqlite3_close(file);
}
