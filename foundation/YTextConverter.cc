#include "foundation/YTextConverter.h"

#include <iconv.h>

#include <cerrno>

void YTextConverter::close() {
  if (handle_ != nullptr) iconv_close(handle_);
  handle_ = nullptr;
}

bool YTextConverter::open(const char* from, const char* to) {
  close();
  iconv_t const handle = iconv_open(to, from);
  if (handle == reinterpret_cast<iconv_t>(-1)) return false;
  handle_ = handle;
  return true;
}

std::size_t YTextConverter::convert(std::string_view bytes, std::string& to) {
  char* from = const_cast<char*>(bytes.data());
  std::size_t left = bytes.size();
  char piece[4096];
  iconv(handle_, nullptr, nullptr, nullptr, nullptr);
  bool full = true;
  while (full) {
    char* out = piece;
    std::size_t room = sizeof piece;
    // Once everything is read, the call without input returns to the initial shift state.
    const std::size_t result = left > 0 ? iconv(handle_, &from, &left, &out, &room)
                                        : iconv(handle_, nullptr, nullptr, &out, &room);
    const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
    to.append(piece, static_cast<std::size_t>(out - piece));
    if (error == 0 && left == 0 && out == piece) break;
    full = error == 0 || error == E2BIG;
  }
  return bytes.size() - left;
}

void YTextConverter::convertAll(std::string_view bytes, std::string& to, Replace replace) {
  while (!bytes.empty()) {
    bytes.remove_prefix(convert(bytes, to));
    if (!bytes.empty()) bytes.remove_prefix(replace(bytes, to));
  }
}
