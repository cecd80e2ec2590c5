// Conversion between two encodings. Internal to the system.

#ifndef FOUNDATION_YTEXTCONVERTER_H_
#define FOUNDATION_YTEXTCONVERTER_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"

// A conversion by iconv in one direction. No other code calls iconv.
class YQRT_API YTextConverter {
 public:
  YTextConverter() = default;
  YTextConverter(const char* from, const char* to) { open(from, to); }
  ~YTextConverter() { close(); }
  YTextConverter(const YTextConverter&) = delete;
  YTextConverter& operator=(const YTextConverter&) = delete;

  // Returns false, and the converter is closed, when iconv does not have the conversion.
  bool open(const char* from, const char* to);
  bool isOpen() const { return handle_ != nullptr; }

  // Appends the conversion of `bytes` to `to`. It starts and ends in the initial shift state.
  // Returns the number of bytes that were converted, which is the offset of the first invalid ones
  // if there are any. REQUIRES: isOpen()
  std::size_t convert(std::string_view bytes, std::string& to);

  // Appends a replacement for the first bytes of `rest`, which cannot be converted, and returns how
  // many bytes it replaces, at least 1.
  using Replace = std::size_t (*)(std::string_view rest, std::string& to);
  // Converts all of `bytes`, with replacements. REQUIRES: isOpen()
  void convertAll(std::string_view bytes, std::string& to, Replace replace);

 private:
  void* handle_ = nullptr;

  void close();
};

#endif  // FOUNDATION_YTEXTCONVERTER_H_
