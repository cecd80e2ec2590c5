// Tables of tests that are text files. A case begins with "== name"; each of its lines begins with
// a mark and a blank. A mark alone is an empty line.

#ifndef TESTS_SUPPORT_ROWS_H_
#define TESTS_SUPPORT_ROWS_H_

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

struct Row {
  std::string table;  // the file's name without folder and extension
  std::string name;
  std::vector<std::pair<char, std::string>> lines;
};

inline void PrintTo(const Row& row, std::ostream* out) {
  *out << row.table << ", " << row.name;
}

inline std::vector<Row> RowsOf(const std::vector<std::string>& files) {
  std::vector<Row> rows;
  for (const std::string& name : files) {
    const std::string table = std::filesystem::path(name).stem().string();
    std::ifstream file(name);
    for (std::string line; std::getline(file, line);) {
      const std::string rest = line.size() > 2 ? line.substr(2) : "";
      const bool hasMark = line.size() == 1 || (line.size() > 1 && line[1] == ' ');
      if (line.starts_with("== ")) rows.push_back({table, rest.substr(1), {}});
      if (hasMark && !rows.empty() && rows.back().table == table) {
        rows.back().lines.emplace_back(line[0], rest);
      }
    }
  }
  return rows;
}

// Whether the row is for one encoding inside, by the beginning of its name, and not for this one.
inline bool IsOfOtherEncoding(const Row& row, bool isUtf8) {
  return row.name.starts_with(isUtf8 ? "cp932:" : "utf-8:");
}

inline std::string NameOfRow(const testing::TestParamInfo<Row>& info) {
  std::string name = info.param.table + "_" + info.param.name;
  for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
  return name;
}

#endif  // TESTS_SUPPORT_ROWS_H_
