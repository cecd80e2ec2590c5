#include "foundation/YEncoding.h"

#include <langinfo.h>

#include <cstring>
#include <initializer_list>

const char* YEncoding::OfLocale() {
  const char* const encoding = nl_langinfo(CODESET);
  for (const char* ascii : {"", "ANSI_X3.4-1968", "US-ASCII", "ASCII"}) {
    if (std::strcmp(encoding, ascii) == 0) return "UTF-8";
  }
  return encoding;
}
