// Linked into a test program, this runs it with the encoding inside that the environment names.

#include <cstdlib>
#include <string_view>

#include "foundation/YEncoding.h"

namespace {

// Before the texts of the tests are made.
__attribute__((constructor(101))) void Choose() {
  const char* const name = std::getenv("CLUI_INSIDE");
  const bool isUtf8 = name != nullptr && std::string_view(name) == "utf-8";
  YEncoding::SetInside(isUtf8 ? YEncoding::Utf8 : YEncoding::ShiftJis);
}

}  // namespace
