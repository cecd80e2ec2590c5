#include "terminal/YcluiCapabilities.h"

#include <unistd.h>

#include <cstdlib>

// After the others, since it has macros with everyday names.
#include <term.h>

namespace {

// Bits of the capability "ncv".
constexpr int Underline = 2;
constexpr int Dim = 16;

const char* Find(const char* name) {
  const char* found = tigetstr(name);
  return found == reinterpret_cast<const char*>(-1) ? nullptr : found;
}

// Terminals of today need no delays.
std::string WithoutDelays(std::string text) {
  for (std::size_t begin; (begin = text.find("$<")) != text.npos;) {
    const std::size_t end = text.find('>', begin);
    if (end == text.npos) break;
    text.erase(begin, end + 1 - begin);
  }
  return text;
}

std::string Text(const char* name) {
  const char* found = Find(name);
  return found == nullptr ? std::string() : WithoutDelays(found);
}

int Number(const char* name, int otherwise) {
  const int found = tigetnum(name);
  return found > 0 ? found : otherwise;
}

std::vector<std::string> Colours() {
  std::vector<std::string> colours;
  const char* unwanted = std::getenv("NO_COLOR");
  if (unwanted != nullptr && *unwanted != '\0') return colours;
  const std::string set = Text("setaf");
  const int count = set.empty() ? 0 : Number("colors", 0);
  for (int i = 0; i < 16 && count >= 8; ++i) {
    if (i == 8 && count < 16) break;
    colours.push_back(YcluiCapabilities::With(set, static_cast<std::size_t>(i)));
  }
  return colours;
}

void ReadStyles(YcluiCapabilities& to) {
  to.plain = Text("sgr0");
  if (to.plain.empty()) return;
  to.bold = Text("bold");
  to.dim = Text("dim");
  to.underline = Text("smul");
  to.colours = Colours();
  const int noColour = Number("ncv", 0);
  to.underlineHasNoColour = (noColour & Underline) != 0;
  to.dimHasNoColour = (noColour & Dim) != 0;
}

void ReadMoves(YcluiCapabilities& to) {
  to.up = Text("cuu1");
  to.left = Text("cub1");
  to.right = Text("cuf1");
  to.upBy = Text("cuu");
  to.leftBy = Text("cub");
  to.rightBy = Text("cuf");
  to.toColumn = Text("hpa");
}

YcluiCapabilities ReadDescription() {
  YcluiCapabilities to;
  to.wraps = tigetflag("am") > 0;
  to.wrapsLate = tigetflag("xenl") > 0;
  ReadMoves(to);
  to.clearToLineEnd = Text("el");
  to.clearToEnd = Text("ed");
  to.clearScreen = Text("clear");
  to.ring = Text("bel");
  ReadStyles(to);
  to.begin = Text("smkx");
  to.end = Text("rmkx");
  // Without its marks a paste could not be distinguished from typing.
  if (Find("PS") != nullptr && Find("PE") != nullptr) {
    to.begin += Text("BE");
    to.end = Text("BD") + to.end;
  }
  to.width = Number("cols", to.width);
  to.height = Number("lines", to.height);
  return to;
}

}  // namespace

// A description that the host has in use stays so.
YcluiCapabilities YcluiCapabilities::Read() {
  TERMINAL* const before = set_curterm(nullptr);
  int result = 0;
  const bool found = setupterm(nullptr, STDOUT_FILENO, &result) == 0;
  const YcluiCapabilities to = found ? ReadDescription() : YcluiCapabilities();
  TERMINAL* const description = set_curterm(before);
  if (description != nullptr) del_curterm(description);
  return to;
}

std::string YcluiCapabilities::With(const std::string& capability, std::size_t number) {
  if (capability.empty()) return capability;
  const char* filled = tiparm(capability.c_str(), static_cast<int>(number));
  return filled == nullptr ? std::string() : WithoutDelays(filled);
}
