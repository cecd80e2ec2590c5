#include "foundation/YEncoding.h"

#include <langinfo.h>

#include <atomic>
#include <cstring>
#include <initializer_list>

#include "foundation/YErr.h"

namespace {

std::atomic<bool> isFixed = false;

}  // namespace

YEncoding::Kind YEncoding::inside_ = YEncoding::ShiftJis;

YWord YEncoding::SetInside(Kind kind) {
  if (kind == inside_) return 1;
  if (isFixed.load(std::memory_order_relaxed)) return cluiWarning(YErrEncodingIsFixed);
  inside_ = kind;
  return 1;
}

void YEncoding::Fix() {
  isFixed.store(true, std::memory_order_relaxed);
}

const char* YEncoding::OfLocale() {
  const char* const encoding = nl_langinfo(CODESET);
  for (const char* ascii : {"", "ANSI_X3.4-1968", "US-ASCII", "ASCII"}) {
    if (std::strcmp(encoding, ascii) == 0) return "UTF-8";
  }
  return encoding;
}
