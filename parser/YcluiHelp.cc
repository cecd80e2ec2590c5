#include "parser/YcluiHelp.h"

#include <algorithm>
#include <new>
#include <optional>
#include <utility>

#include "foundation/YKanji.h"
#include "foundation/YMemory.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiHelpTable.h"

namespace {

const YcluiHelpRecord* Find(const YcluiHelpTable* table, std::uint32_t id, int index) {
  return table == nullptr ? nullptr : table->find(id & YcluiIdMask, index);
}

// Null for an id that no token has.
YcluiHelpRecord* FindOrAdd(std::unique_ptr<YcluiHelpTable>& table, std::uint32_t id, int index) {
  if ((id & YcluiIdMask) == 0) return nullptr;
  if (table == nullptr) table.reset(YChecked(new (std::nothrow) YcluiHelpTable));
  return &table->findOrAdd(id & YcluiIdMask, index);
}

const YcluiHelpRecord* FindArgument(const YcluiHelpTable* table, std::uint32_t id, int index) {
  return index < 1 ? nullptr : Find(table, id, index);
}

YcluiHelpRecord* FindOrAddArgument(std::unique_ptr<YcluiHelpTable>& table, std::uint32_t id,
                                   int index) {
  return index < 1 ? nullptr : FindOrAdd(table, id, index);
}

const char* TextOf(const std::optional<YString>& text) {
  return text.has_value() ? text->buffer : nullptr;
}

// The text may be the former one.
void Set(std::optional<YString>& text, const char* newText) {
  if (newText == nullptr) {
    text.reset();
  } else if (text.has_value()) {
    text->assign(newText);
  } else {
    text.emplace(newText);
  }
}

void KeepThoseThatBeginWith(const char* typed, YString_Array& values) {
  YString folded(typed);
  folded.toLower();
  YString beginning;
  int kept = 0;
  for (int i = 0; i < values.size(); ++i) {
    beginning.assign(values.at(i).buffer, std::min(values.at(i).length, folded.length));
    beginning.toLower();
    if (beginning != folded) continue;
    if (kept != i) values.at(kept) = std::move(values.at(i));
    ++kept;
  }
  if (kept < values.size()) values.resize(kept);
}

}  // namespace

YcluiHelp::YcluiHelp() = default;

YcluiHelp::~YcluiHelp() = default;

YWord YcluiHelp::setText(std::uint32_t id, const char* text) {
  YcluiHelpRecord* record = FindOrAdd(table_, id, 0);
  if (record == nullptr) return 0;
  Set(record->text, text);
  return 1;
}

const char* YcluiHelp::text(std::uint32_t id) const {
  const YcluiHelpRecord* record = Find(table_.get(), id, 0);
  return record == nullptr ? nullptr : TextOf(record->text);
}

YWord YcluiHelp::setArgument(std::uint32_t id, int index, const char* name, const char* text) {
  YcluiHelpRecord* record = FindOrAddArgument(table_, id, index);
  if (record == nullptr) return 0;
  Set(record->name, name);
  Set(record->text, text);
  return 1;
}

const char* YcluiHelp::argumentName(std::uint32_t id, int index) const {
  const YcluiHelpRecord* record = FindArgument(table_.get(), id, index);
  return record == nullptr ? nullptr : TextOf(record->name);
}

const char* YcluiHelp::argumentText(std::uint32_t id, int index) const {
  const YcluiHelpRecord* record = FindArgument(table_.get(), id, index);
  return record == nullptr ? nullptr : TextOf(record->text);
}

YWord YcluiHelp::setRange(std::uint32_t id, int index, double low, double high) {
  if (!(low <= high)) return 0;
  YcluiHelpRecord* record = FindOrAddArgument(table_, id, index);
  if (record == nullptr) return 0;
  record->range = {low, high};
  return 1;
}

YWord YcluiHelp::removeRange(std::uint32_t id, int index) {
  YcluiHelpRecord* record = FindOrAddArgument(table_, id, index);
  if (record == nullptr) return 0;
  record->range.reset();
  return 1;
}

bool YcluiHelp::range(std::uint32_t id, int index, double& low, double& high) const {
  const YcluiHelpRecord* record = FindArgument(table_.get(), id, index);
  if (record == nullptr || !record->range.has_value()) return false;
  low = record->range->low;
  high = record->range->high;
  return true;
}

YWord YcluiHelp::setValues(std::uint32_t id, int index, const YString_Array& values) {
  YcluiHelpRecord* record = FindOrAddArgument(table_, id, index);
  if (record == nullptr) return 0;
  record->values = values;
  record->function.set(nullptr, nullptr, nullptr);
  return 1;
}

YWord YcluiHelp::setValues(std::uint32_t id, int index, YcluiValuesProc function, void* data,
                           YcluiReleaseProc release) {
  YcluiHelpRecord* record = FindOrAddArgument(table_, id, index);
  if (record == nullptr) return 0;
  record->values.removeAll();
  record->function.set(function, data, release);
  return 1;
}

bool YcluiHelp::hasValues(std::uint32_t id, int index) const {
  const YcluiHelpRecord* record = FindArgument(table_.get(), id, index);
  return record != nullptr && (record->values.size() > 0 || record->function.isThere());
}

// A function may destroy the record and this help, so neither is used after it.
void YcluiHelp::findValues(std::uint32_t id, int index, const char* typed,
                           YString_Array& values) const {
  const YcluiHelpRecord* record = FindArgument(table_.get(), id, index);
  const char* text = typed == nullptr ? "" : typed;
  values.removeAll();
  if (record == nullptr) return;
  if (record->function.isThere()) {
    record->function.call(text, values);
  } else {
    values = record->values;
  }
  KeepThoseThatBeginWith(text, values);
}

YWord YcluiHelp::setFileName(std::uint32_t id, int index, bool isFileName) {
  YcluiHelpRecord* record = FindOrAddArgument(table_, id, index);
  if (record == nullptr) return 0;
  record->isFileName = isFileName;
  return 1;
}

bool YcluiHelp::isFileName(std::uint32_t id, int index) const {
  const YcluiHelpRecord* record = FindArgument(table_.get(), id, index);
  return record != nullptr && record->isFileName;
}
