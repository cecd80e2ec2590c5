// Conversion between two encodings. Internal to the system: hosts have no need of it.

#ifndef FOUNDATION_YTEXTCONVERTER_H_
#define FOUNDATION_YTEXTCONVERTER_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"

// One direction of iconv, which is called nowhere else.
class YQRT_API YTextConverter {
 public:
  YTextConverter() = default;
  YTextConverter(const char* from, const char* to) { open(from, to); }
  ~YTextConverter() { close(); }
  YTextConverter(const YTextConverter&) = delete;
  YTextConverter& operator=(const YTextConverter&) = delete;

  // False, and nothing is open, when this machine's iconv has no such conversion.
  bool open(const char* from, const char* to);
  bool isOpen() const { return handle_ != nullptr; }

  // Appends the conversion of `bytes` to `to`, from the initial shift state back to it. Returns how
  // many bytes were converted: all of them, or those before the first that cannot be.
  // REQUIRES: isOpen()
  std::size_t convert(std::string_view bytes, std::string& to);

  // Appends something to `to` in place of the first bytes of `rest`, which cannot be converted, and
  // returns how many bytes it has replaced, at least 1.
  using Replace = std::size_t (*)(std::string_view rest, std::string& to);
  // Converts all of `bytes`, with replacements. REQUIRES: isOpen()
  void convertAll(std::string_view bytes, std::string& to, Replace replace);

 private:
  void* handle_ = nullptr;

  void close();
};

#endif  // FOUNDATION_YTEXTCONVERTER_H_
