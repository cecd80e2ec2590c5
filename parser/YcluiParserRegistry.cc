#include "parser/YcluiParserRegistry.h"

#include <new>

YStack<YcluiParserRegistry::Entry*>* YcluiParserRegistry::Mortuary = nullptr;
YcluiParserRegistry::Entry* YcluiParserRegistry::First = nullptr;
YcluiParserRegistry::Entry* YcluiParserRegistry::Last = nullptr;

// --- Live parsers

void YcluiParserRegistry::Join(Entry& entry) {
  entry.previous = Last;
  (Last == nullptr ? First : Last->next) = &entry;
  Last = &entry;
}

void YcluiParserRegistry::Leave(Entry& entry) {
  (entry.previous == nullptr ? First : entry.previous->next) = entry.next;
  (entry.next == nullptr ? Last : entry.next->previous) = entry.previous;
}

YcluiParser* YcluiParserRegistry::Find(long address) {
  for (const Entry* entry = First; entry != nullptr; entry = entry->next) {
    if (reinterpret_cast<long>(entry->parser) == address) {
      return entry->isCondemned ? nullptr : entry->parser;
    }
  }
  return nullptr;
}

YcluiParser* YcluiParserRegistry::At(int index) {
  for (const Entry* entry = First; entry != nullptr; entry = entry->next) {
    if (!entry->isCondemned && index-- == 0) return entry->parser;
  }
  return nullptr;
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
