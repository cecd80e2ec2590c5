#include "foundation/YString.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "foundation/YBlockPool.h"
#include "foundation/YKanji.h"
#include "foundation/YMemory.h"
#include "foundation/YNumber.h"

namespace {

constexpr unsigned long LongestRoom = 0xFFFFFFFF;

// The shared buffer of all strings without an allocation. A caller may write nothing but a NUL into
// an empty text.
char NoText[1] = {'\0'};

unsigned long LengthOf(const char* text) {
  return text == nullptr ? 0 : std::strlen(text);
}

const char* TextOf(const char* text) {
  return text == nullptr ? "" : text;
}

template <class Integer>
YString& AppendInteger(YString& s, Integer value) {
  char digits[YNumberRoom];
  const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  s.concat(digits, static_cast<unsigned long>(end - digits));
  return s;
}

}  // namespace

template class YPooled<YString>;

thread_local char YString::_out_range_rescue = '\0';

YString::YString() : buffer(NoText), length(0), capacity(0) {}

YString::YString(int size) : YString() {
  if (size > 0) expand(static_cast<unsigned long>(size) + 1);
}

YString::YString(const char* text) : YString() {
  assign(text);
}

YString::YString(const char* text, int n) : YString() {
  if (n > 0) assign(text, static_cast<unsigned long>(n));
}

YString::YString(const YString& other) : YString() {
  assign(other);
}

YString::YString(YString&& other) noexcept : YString() {
  *this = std::move(other);
}

YString::~YString() {
  if (capacity != 0) std::free(buffer);
}

YString& YString::operator=(const YString& other) {
  if (this != &other) assign(other);
  return *this;
}

YString& YString::operator=(YString&& other) noexcept {
  std::swap(buffer, other.buffer);
  std::swap(length, other.length);
  std::swap(capacity, other.capacity);
  return *this;
}

std::uint32_t YString::writtenLength() const {
  return length + static_cast<std::uint32_t>(std::strlen(buffer + length));
}

// Enlarges the memory to `room` bytes, keeping its content. The last byte is set to NUL; operator[]
// cannot overwrite it, so every text ends there at the latest.
void YString::reallocate(unsigned long room) {
  if (room > LongestRoom) YOutOfMemory();
  void* old = capacity == 0 ? nullptr : buffer;
  buffer = static_cast<char*>(YChecked(std::realloc(old, room)));
  if (old == nullptr) buffer[0] = '\0';
  buffer[room - 1] = '\0';
  capacity = static_cast<std::uint32_t>(room);
}

// Makes room for a text of `n` bytes, at least doubling the capacity.
void YString::growFor(unsigned long n) {
  if (n < capacity) return;
  const unsigned long doubled = std::min(2UL * capacity, LongestRoom);
  reallocate(std::max(n + 1, doubled));
}

YWord YString::assign(const char* text) {
  return assign(text, LengthOf(text));
}

YWord YString::tryAssign(const char* text) {
  const unsigned long n = LengthOf(text);
  if (n < capacity || n == 0) return assign(text, n);
  return replace(text, n) ? 1 : 0;
}

YWord YString::assignAnew(const char* text, unsigned long n) {
  if (text == nullptr || n == 0) {
    setLength(0);
  } else if (!replace(text, n)) {
    YOutOfMemory();
  }
  return 1;
}

// Stores a text that exceeds the capacity in new memory of exactly its size; false when there is
// none.
bool YString::replace(const char* text, unsigned long n) {
  auto* memory = n >= LongestRoom ? nullptr : static_cast<char*>(std::malloc(n + 1));
  if (memory == nullptr) return false;
  std::memcpy(memory, text, n);  // `text` may be in the old memory
  if (capacity != 0) std::free(buffer);
  buffer = memory;
  capacity = static_cast<std::uint32_t>(n + 1);
  setLength(n);
  return true;
}

YWord YString::concat(const char* text) {
  return concat(text, LengthOf(text));
}

YWord YString::appendAnew(const char* text, unsigned long n) {
  // Compared as numbers, because `text` may point anywhere.
  const std::uintptr_t offset =
      reinterpret_cast<std::uintptr_t>(text) - reinterpret_cast<std::uintptr_t>(buffer);
  const bool inside = offset < capacity;
  if (n > LongestRoom) YOutOfMemory();
  growFor(length + n);
  return concat(inside ? buffer + offset : text, n);
}

YString& YString::operator<<(const char* text) {
  concat(text);
  return *this;
}

YString& YString::operator<<(const YString& text) {
  concat(text.buffer, text.textLength());
  return *this;
}

YString& YString::operator<<(char byte) {
  growFor(length + 1UL);
  buffer[length] = byte;
  setLength(length + 1UL);
  return *this;
}

YString& YString::operator<<(int value) {
  return AppendInteger(*this, value);
}

YString& YString::operator<<(unsigned int value) {
  return AppendInteger(*this, value);
}

YString& YString::operator<<(long value) {
  return AppendInteger(*this, value);
}

YString& YString::operator<<(unsigned long value) {
  return AppendInteger(*this, value);
}

YString& YString::operator<<(double value) {
  char room[YNumberRoom];
  concat(room, YPrintDouble(value, room));
  return *this;
}

YWord YString::expand(unsigned long n) {
  if (n <= capacity) return 1;
  const std::uint32_t old = capacity;
  reallocate(n);
  std::memset(buffer + old, 0, n - old);
  return 1;
}

YWord YString::expandDelta(unsigned long n) {
  if (n > LongestRoom) YOutOfMemory();
  return expand(capacity + n);
}

int YString::index(char ch, int from) const {
  if (from < 0) from = 0;
  const std::uint32_t start = static_cast<std::uint32_t>(from);
  const std::uint32_t end = textLength();
  if (start >= end) return -1;
  const void* found = std::memchr(buffer + start, ch, end - start);
  return found == nullptr ? -1 : static_cast<int>(static_cast<const char*>(found) - buffer);
}

char& YString::operator[](int i) {
  const std::uint32_t at = static_cast<std::uint32_t>(i);
  return capacity != 0 && capacity - 1 > at ? buffer[at] : _out_range_rescue;
}

char YString::operator[](int i) const {
  const std::uint32_t at = static_cast<std::uint32_t>(i);
  return capacity != 0 && capacity - 1 > at ? buffer[at] : _out_range_rescue;
}

YWord YString::toLower() {
  YFoldCase(buffer);
  return 1;
}

YWord operator==(const YString& a, const YString& b) {
  return a == b.buffer;
}

YWord operator!=(const YString& a, const YString& b) {
  return a != b.buffer;
}

YWord operator==(const YString& a, const char* b) {
  return std::strcmp(a.buffer, TextOf(b)) == 0 ? 1 : 0;
}

YWord operator!=(const YString& a, const char* b) {
  return std::strcmp(a.buffer, TextOf(b)) == 0 ? 0 : 1;
}
