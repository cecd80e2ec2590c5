#include "foundation/YcluiVersion.h"

const char* YcluiVersion() {
  return YQRTCLUI_VERSION;
}

std::uint32_t YcluiVersionNumber() {
  return YQRTCLUI_VERSION_NUMBER;
}
