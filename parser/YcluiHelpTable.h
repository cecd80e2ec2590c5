// The records of YcluiHelp.

#ifndef PARSER_YCLUIHELPTABLE_H_
#define PARSER_YCLUIHELPTABLE_H_

#include <cstdint>
#include <optional>

#include "parser/YcluiHelp.h"
#include "platform/containers/YHashTable.h"

// A function of the host that it lends until it is released.
class YcluiValuesFunction {
 public:
  YcluiValuesFunction() = default;
  YcluiValuesFunction(const YcluiValuesFunction&) = delete;
  YcluiValuesFunction& operator=(const YcluiValuesFunction&) = delete;
  ~YcluiValuesFunction() { set(nullptr, nullptr, nullptr); }

  // Releases the present one, which may set another one.
  void set(YcluiValuesProc function, void* data, YcluiReleaseProc release);
  bool isThere() const { return function_ != nullptr; }
  // REQUIRES: isThere(). This may be destroyed meanwhile.
  void call(const char* typed, YString_Array& values) const { function_(data_, typed, values); }

 private:
  YcluiValuesProc function_ = nullptr;
  void* data_ = nullptr;
  YcluiReleaseProc release_ = nullptr;
};

// The help of a word, or of one of its arguments.
struct YcluiHelpRecord {
  struct Range {
    double low;
    double high;
  };

  std::optional<YString> name;  // of an argument
  std::optional<YString> text;
  std::optional<Range> range;
  YString_Array values;
  YcluiValuesFunction function;
  bool isFileName = false;
};

// Records by the id of a word and the index of an argument, 0 for the word itself. A record stays
// until the table is destroyed.
class YcluiHelpTable {
 public:
  YcluiHelpTable() = default;
  YcluiHelpTable(const YcluiHelpTable&) = delete;
  YcluiHelpTable& operator=(const YcluiHelpTable&) = delete;
  ~YcluiHelpTable();

  YcluiHelpRecord* find(std::uint32_t id, int index) const;
  YcluiHelpRecord& findOrAdd(std::uint32_t id, int index);

 private:
  struct Entry {
    std::uint64_t key = 0;
    YcluiHelpRecord* record = nullptr;  // owned by the table

    bool isEmpty() const { return record == nullptr; }
    std::uint64_t hash() const { return key; }
  };

  static std::uint64_t KeyOf(std::uint32_t id, int index);

  YHashTable<Entry> entries_;
};

#endif  // PARSER_YCLUIHELPTABLE_H_
