// The byte string of the system.

#ifndef FOUNDATION_YSTRING_H_
#define FOUNDATION_YSTRING_H_

#include <cstddef>
#include <cstring>
#include <new>

#include "foundation/YTypes.h"

// A growable text of bytes, NUL-terminated. Double-byte characters are two bytes of it.
//
// The three fields are read, and `buffer` is written through, by callers directly. Writing through
// `buffer` or operator[] does not change `length`; a caller that does so reads the text as
// NUL-terminated afterwards, and copies, `index` and appending the string to another do the same:
// the text goes on to the next NUL where the one at `length` was written over. Memory that cannot
// be had ends the process (YMemory.h), so the words that the operations return are always 1.
class YQRT_API YString {
 public:
  char* buffer;            // the text; never null, the empty text when nothing is allocated
  std::uint32_t length;    // bytes of text as last set by an operation of this class
  std::uint32_t capacity;  // bytes allocated, the NUL included; 0 when nothing is

  YString();
  // Empty text with room: every index below `size` can be written through operator[], and the text
  // reads as empty until then. A size of 0 allocates nothing.
  explicit YString(int size);
  // A copy of the text, allocated to its length. Null gives empty text.
  YString(const char* text);  // NOLINT(google-explicit-constructor)
  // A copy of the first `n` bytes.
  YString(const char* text, int n);
  YString(const YString& other);
  YString(YString&& other) noexcept;
  ~YString();

  YString& operator=(const YString& other);
  YString& operator=(YString&& other) noexcept;

  // Strings on the heap share blocks of memory: a syntax has one for each of its commands.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* string, std::size_t size);

  // Replace the text, in the memory that is there when it is large enough. Null empties the string.
  // The source may lie inside the string itself.
  YWord assign(const char* text);
  YWord assign(const char* text, unsigned long n) {
    if (text == nullptr || n >= capacity) return assignAnew(text, n);
    std::memmove(buffer, text, n);
    setLength(n);
    return 1;
  }
  YWord assign(const YString& other) { return assign(other.buffer, other.textLength()); }

  // The same, but answers 0, and changes nothing, when there is no memory for a longer text.
  YWord tryAssign(const char* text);

  // Append behind `length`. The buffer may move, so a caller that keeps a position keeps it as an
  // offset. Room grows by doubling: appending is linear in what is appended. The source may lie
  // inside the string.
  YWord concat(const char* text);
  YWord concat(const char* text, unsigned long n) {
    if (text == nullptr || n == 0) return 1;
    if (n >= capacity - length) return appendAnew(text, n);
    std::memmove(buffer + length, text, n);
    setLength(length + n);
    return 1;
  }

  YString& operator<<(const char* text);
  YString& operator<<(const YString& text);
  YString& operator<<(char byte);  // appends a 0 byte too, which ends the text for its readers
  YString& operator<<(int value);
  YString& operator<<(unsigned int value);
  YString& operator<<(long value);
  YString& operator<<(unsigned long value);
  YString& operator<<(double value);  // as YPrintDouble writes it

  // Makes `capacity` at least `n`, keeping the text.
  YWord expand(unsigned long n);
  // Raises `capacity` by `n`, keeping the text.
  YWord expandDelta(unsigned long n);

  // Cuts the text to its first `n` bytes, keeping the room. Nothing happens when it is no longer.
  void truncate(std::uint32_t n) {
    if (n < length) setLength(n);
  }

  // The position of the first `ch` at or behind `from`, or -1.
  int index(char ch, int from) const;

  // buffer[i] when `capacity` is not 0 and capacity - 1 is greater than i, compared unsigned, and
  // otherwise the spare character of the class: a store there is lost, a load yields whatever was
  // stored last. At the length of a tightly allocated text that is the spare character, so no loop
  // may end by it.
  char& operator[](int i);
  char operator[](int i) const;

  // Folds the ASCII capitals to lower case; bytes of double-byte characters stay.
  YWord toLower();

  // The spare character of operator[].
  static char _out_range_rescue;

 private:
  // `length`, or more where a caller wrote over the NUL that every operation leaves there.
  std::uint32_t textLength() const { return buffer[length] == '\0' ? length : writtenLength(); }
  std::uint32_t writtenLength() const;
  void reallocate(unsigned long room);
  void growFor(unsigned long n);
  bool replace(const char* text, unsigned long n);
  // What the present room is too small for.
  YWord assignAnew(const char* text, unsigned long n);
  YWord appendAnew(const char* text, unsigned long n);

  void setLength(unsigned long n) {
    length = static_cast<std::uint32_t>(n);
    if (capacity != 0) buffer[n] = '\0';
  }
};

// Comparison of the texts up to their NUL, answering 1 or 0. Null counts as the empty text.
YQRT_API YWord operator==(const YString& a, const YString& b);
YQRT_API YWord operator!=(const YString& a, const YString& b);
YQRT_API YWord operator==(const YString& a, const char* b);
YQRT_API YWord operator!=(const YString& a, const char* b);

#endif  // FOUNDATION_YSTRING_H_
