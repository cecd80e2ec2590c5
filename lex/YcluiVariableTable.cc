#include "lex/YcluiVariableTable.h"

#include <new>

#include "foundation/YErr.h"
#include "lex/YcluiArrayVariable.h"
#include "lex/YcluiPresentTimeVariable.h"
#include "lex/YcluiSimpleVariable.h"
#include "platform/containers/YtString.h"

namespace {

unsigned int SetHash(unsigned long hash) {
  return static_cast<unsigned int>(hash ^ (hash >> 32));
}

YcluiVariable* RecordOf(const void* item) {
  return static_cast<YcluiVariable*>(static_cast<YAssoc*>(const_cast<void*>(item)));
}

}  // namespace

YcluiVariableTable::YcluiVariableTable() {
  keep(new (std::nothrow) YcluiPresentTimeVariable);
}

YcluiVariableTable::YcluiVariableTable(const YcluiVariableTable* base) : base_(base) {
  keep(new (std::nothrow) YcluiPresentTimeVariable);
}

YcluiVariableTable::~YcluiVariableTable() {
  deleteAll();
}

YcluiVariable* YcluiVariableTable::find(const char* key) const {
  folded.assign(key);
  folded.toLower();
  const unsigned int hash = SetHash(YHashText({folded.buffer, folded.length}));
  YcluiVariable* own = findFolded(folded.buffer, hash);
  return own != nullptr || base_ == nullptr ? own : base_->findFolded(folded.buffer, hash);
}

YcluiVariable* YcluiVariableTable::findFolded(const char* name, unsigned int hash) const {
  void* found =
      YSet::find(hash, [name](const void* item) { return RecordOf(item)->matches(name) != 0; });
  return static_cast<YcluiVariable*>(static_cast<YAssoc*>(found));
}

YcluiVariable* YcluiVariableTable::findToSet(const char* key) {
  YcluiVariable* found = find(key);
  if (found == nullptr || base_ == nullptr) return found;
  if (findFolded(folded.buffer, SetHash(YHashText({folded.buffer, folded.length}))) != nullptr) {
    return found;
  }
  if (found->kind() == YcluiVariableSimple) {
    return keep(new (std::nothrow) YcluiSimpleVariable(found->name(), *found->valuePointer()));
  }
  return keep(new (std::nothrow)
                  YcluiArrayVariable(found->name(), found->elementCount(), found->elements()));
}

void YcluiVariableTable::discardOwn() {
  if (count() <= 1) return;
  deleteAll();
  keep(new (std::nothrow) YcluiPresentTimeVariable);
}

YcluiVariable* YcluiVariableTable::addSimple(const char* name, const YAttribValue& value) {
  if (find(name) != nullptr) {
    cluiWarning(YErrNameExists);
    return nullptr;
  }
  return keep(new (std::nothrow) YcluiSimpleVariable(name, value));
}

YcluiVariable* YcluiVariableTable::addArray(const char* name, std::uint32_t count,
                                            const YAttribValue* values) {
  if (find(name) != nullptr) {
    cluiWarning(YErrNameExists);
    return nullptr;
  }
  if (count > YcluiMostElements) {
    cluiWarning(YErrOutsideArray);
    return nullptr;
  }
  return keep(new (std::nothrow) YcluiArrayVariable(name, count, values));
}

unsigned int YcluiVariableTable::hashValue(const void* item) const {
  return SetHash(static_cast<const YAssoc*>(item)->hashKey());
}

// Owns the record from now on; destroys it and returns null when it cannot be added.
YcluiVariable* YcluiVariableTable::keep(YcluiVariable* record) {
  if (record == nullptr) {
    cluiFatal(YErrNoMemory);
    return nullptr;
  }
  if (attach(static_cast<YAssoc*>(record)) != nullptr) return record;
  delete record;
  return nullptr;
}
