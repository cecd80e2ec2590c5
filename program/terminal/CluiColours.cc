#include "program/terminal/CluiColours.h"

#include <cstdlib>

std::string CluiReadColours(const std::string& ofLanguage, YcluiColours& colours) {
  constexpr char Variable[] = "CLUI_COLOURS";
  const char* const settings = std::getenv(Variable);
  std::string error;
  colours.read(ofLanguage, error);
  if (settings == nullptr || colours.read(settings, error)) return std::string();
  return std::string(Variable) + ": " + error;
}
