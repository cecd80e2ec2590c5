// The byte string of the system.

#ifndef FOUNDATION_YSTRING_H_
#define FOUNDATION_YSTRING_H_

#include <cstddef>
#include <cstring>

#include "foundation/YPooled.h"
#include "foundation/YTypes.h"

// A growable text of bytes, NUL-terminated. Double-byte characters are two bytes of it.
//
// Callers may read the three fields and write through `buffer`. Writing through `buffer` or
// operator[] does not change `length`; afterwards the caller treats the text as NUL-terminated, and
// so do copies, `index` and appending the string to another: when the NUL at `length` was
// overwritten, the text extends to the next NUL. Running out of memory ends the process
// (YMemory.h), so operations return 1 unless their comment says otherwise.
//
// Strings on the heap come from a pool, since a syntax has one for each of its commands.
class YQRT_API YString : public YPooled<YString> {
 public:
  char* buffer;            // the text; never null, the empty text when nothing is allocated
  std::uint32_t length;    // bytes of text, as last set by an operation of this class
  std::uint32_t capacity;  // bytes allocated, including the NUL; 0 when nothing is allocated

  YString();
  // An empty text with reserved memory: every index below `size` can be written through operator[].
  // A size of 0 allocates nothing.
  explicit YString(int size);
  // A copy of the text, with exactly the memory it needs. Null gives the empty text.
  YString(const char* text);  // NOLINT(google-explicit-constructor)
  // A copy of the first `n` bytes.
  YString(const char* text, int n);
  YString(const YString& other);
  YString(YString&& other) noexcept;
  ~YString();

  YString& operator=(const YString& other);
  YString& operator=(YString&& other) noexcept;

  // Replace the text, reusing the memory when it is large enough. Null empties the string. The
  // source may be part of the string itself.
  YWord assign(const char* text);
  YWord assign(const char* text, unsigned long n) {
    if (text == nullptr || n >= capacity) return assignAnew(text, n);
    std::memmove(buffer, text, n);
    setLength(n);
    return 1;
  }
  YWord assign(const YString& other) { return assign(other.buffer, other.textLength()); }

  // Like assign, but returns 0 and changes nothing when there is no memory for a longer text.
  YWord tryAssign(const char* text);

  // Append at offset `length`. The buffer may move, so a caller that keeps a position keeps it as
  // an offset. The capacity doubles, so appending takes time linear in what is appended. The source
  // may be part of the string itself.
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
  YString& operator<<(char byte);  // also appends a NUL byte, which then ends the text for readers
  YString& operator<<(int value);
  YString& operator<<(unsigned int value);
  YString& operator<<(long value);
  YString& operator<<(unsigned long value);
  YString& operator<<(double value);  // as YPrintDouble writes it

  // Makes `capacity` at least `n`, keeping the text.
  YWord expand(unsigned long n);
  // Raises `capacity` by `n`, keeping the text.
  YWord expandDelta(unsigned long n);

  // Shortens the text to its first `n` bytes and keeps the capacity. Does nothing when it is not
  // longer than that.
  void truncate(std::uint32_t n) {
    if (n < length) setLength(n);
  }

  // The offset of the first `ch` at or after `from`, or -1.
  int index(char ch, int from) const;

  // buffer[i] when `capacity` is not 0 and i, taken as unsigned, is less than capacity - 1. Any
  // other index gives a spare character that all strings share: it holds what was last stored
  // there, and its value means nothing. The index `length` of a text without spare capacity is such
  // an index, so no loop may rely on finding the NUL there.
  char& operator[](int i);
  char operator[](int i) const;

  // Folds the ASCII capitals to lower case. Bytes of double-byte characters are not changed.
  YWord toLower();

  // The spare character of operator[].
  static thread_local char _out_range_rescue;

 private:
  // `length`, or more when a caller overwrote the NUL that every operation leaves there.
  std::uint32_t textLength() const { return buffer[length] == '\0' ? length : writtenLength(); }
  std::uint32_t writtenLength() const;
  void reallocate(unsigned long room);
  void growFor(unsigned long n);
  bool replace(const char* text, unsigned long n);
  // assign and concat when the capacity is too small.
  YWord assignAnew(const char* text, unsigned long n);
  YWord appendAnew(const char* text, unsigned long n);

  void setLength(unsigned long n) {
    length = static_cast<std::uint32_t>(n);
    if (capacity != 0) buffer[n] = '\0';
  }
};

// Compare the texts up to their NUL; return 1 or 0. Null is treated as the empty text.
YQRT_API YWord operator==(const YString& a, const YString& b);
YQRT_API YWord operator!=(const YString& a, const YString& b);
YQRT_API YWord operator==(const YString& a, const char* b);
YQRT_API YWord operator!=(const YString& a, const char* b);

#endif  // FOUNDATION_YSTRING_H_
