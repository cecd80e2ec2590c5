#include "program/terminal/CluiCapabilities.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

// Included last, since it defines macros with common names.
#include <term.h>

namespace {

std::string Written;

int PutByte(int byte) {
  Written += static_cast<char>(byte);
  return byte;
}

// The bytes of a capability, without padding.
std::string TextOf(const char* capability) {
  Written.clear();
  if (capability != nullptr) tputs(capability, 1, PutByte);
  return Written;
}

const char* Find(const char* name) {
  const char* found = tigetstr(name);
  return found == reinterpret_cast<const char*>(-1) ? nullptr : found;
}

std::string Text(const char* name) {
  return TextOf(Find(name));
}

std::string TextWith(const char* name, int parameter) {
  const char* found = Find(name);
  return found == nullptr ? std::string() : TextOf(tiparm(found, parameter));
}

bool HasColour() {
  const char* unwanted = std::getenv("NO_COLOR");
  return (unwanted == nullptr || *unwanted == '\0') && tigetnum("colors") >= 8;
}

void AddKey(const char* name, CluiSequence meaning, CluiCapabilities& to) {
  const char* sent = Find(name);
  if (sent != nullptr && *sent != '\0') to.keys[sent] = meaning;
}

// Includes keys without a function here, so that their bytes are not read as typed text.
void AddKeys(CluiCapabilities& to) {
  for (NCURSES_CONST char* const* name = strnames; *name != nullptr; ++name) {
    if (**name == 'k') AddKey(*name, CluiSequence::Other, to);
  }
  AddKey("kcuu1", CluiSequence::Up, to);
  AddKey("kcud1", CluiSequence::Down, to);
  AddKey("kent", CluiSequence::Return, to);
  AddKey("kbs", CluiSequence::Erase, to);
  AddKey("PS", CluiSequence::PasteBegin, to);
  AddKey("PE", CluiSequence::PasteEnd, to);
}

int Number(const char* name, int otherwise) {
  const int found = tigetnum(name);
  return found > 0 ? found : otherwise;
}

}  // namespace

CluiCapabilities CluiCapabilities::Read() {
  CluiCapabilities to;
  int result = 0;
  if (setupterm(nullptr, STDOUT_FILENO, &result) != 0) return to;
  to.wraps = tigetflag("am") > 0;
  to.wrapsLate = tigetflag("xenl") > 0;
  to.up = Text("cuu1");
  to.clearToEnd = Text("ed");
  to.clearScreen = Text("clear");
  to.ring = Text("bel");
  if (HasColour()) to.colour = Text("bold") + TextWith("setaf", 2);
  if (!to.colour.empty()) to.plain = Text("sgr0");
  to.begin = Text("smkx");
  to.end = Text("rmkx");
  // Bracketed paste is enabled only if both of its marks are known.
  if (Find("PS") != nullptr && Find("PE") != nullptr) {
    to.begin += Text("BE");
    to.end = Text("BD") + to.end;
  }
  AddKeys(to);
  to.width = Number("cols", to.width);
  to.height = Number("lines", to.height);
  return to;
}
