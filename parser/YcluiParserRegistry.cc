#include "parser/YcluiParserRegistry.h"

#include <new>

thread_local YStack<YcluiParserRegistry::Entry*>* YcluiParserRegistry::Mortuary = nullptr;
constinit YLiveList<YcluiParserRegistry::Entry> YcluiParserRegistry::All;

// --- Live parsers

void YcluiParserRegistry::Join(Entry& entry) {
  All.join(entry.membership);
}

void YcluiParserRegistry::Leave(Entry& entry) {
  All.leave(entry.membership);
}

YcluiParser* YcluiParserRegistry::Find(long address) {
  const Entry* found = All.find([address](const Entry& entry) {
    return reinterpret_cast<long>(entry.parser) == address && !entry.isCondemned;
  });
  return found == nullptr ? nullptr : found->parser;
}

YcluiParser* YcluiParserRegistry::At(int index) {
  const Entry* found =
      All.find([&index](const Entry& entry) { return !entry.isCondemned && index-- == 0; });
  return found == nullptr ? nullptr : found->parser;
}

// --- The mortuary

void YcluiParserRegistry::CreateMortuary() {
  if (Mortuary == nullptr) Mortuary = new (std::nothrow) YStack<Entry*>;
}

void YcluiParserRegistry::DestroyMortuary() {
  delete Mortuary;
  Mortuary = nullptr;
}

void YcluiParserRegistry::Condemn(Entry& entry) {
  if (Mortuary == nullptr || IndexOfBody(entry) >= 0) return;
  Mortuary->push(&entry);
  entry.isCondemned = true;
}

void YcluiParserRegistry::Exhume(const Entry& entry) {
  if (Mortuary == nullptr || !entry.isCondemned) return;
  if (const int index = IndexOfBody(entry); index >= 0) RemoveBody(index);
}

YcluiParser* YcluiParserRegistry::TakeBody() {
  if (Mortuary == nullptr) return nullptr;
  for (int i = Mortuary->count() - 1; i >= 0; --i) {
    if (Mortuary->at(i)->running != 0) continue;
    YcluiParser* body = Mortuary->at(i)->parser;
    RemoveBody(i);
    return body;
  }
  return nullptr;
}

// -1 when the parser is not in the mortuary.
int YcluiParserRegistry::IndexOfBody(const Entry& entry) {
  for (int i = 0; i < Mortuary->count(); ++i) {
    if (Mortuary->at(i) == &entry) return i;
  }
  return -1;
}

void YcluiParserRegistry::RemoveBody(int index) {
  for (int i = index; i + 1 < Mortuary->count(); ++i) Mortuary->at(i) = Mortuary->at(i + 1);
  Mortuary->drop();
}
