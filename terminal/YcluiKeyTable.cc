#include "terminal/YcluiKeyTable.h"

#include <unistd.h>

// After the others, since it has macros with everyday names.
#include <term.h>

namespace {

using Name = YcluiKeyName;

constexpr int LastModifier = 16;

// The parameter of xterm is 1 plus a sum: 1 Shift, 2 Alt, 4 Control, 8 Meta.
Name WithModifier(Name name, int parameter) {
  const bool isShiftOnly = ((parameter - 1) & ~1) == 0;
  if (isShiftOnly) return name;
  if (name == Name::Left) return Name::WordLeft;
  return name == Name::Right ? Name::WordRight : name;
}

const struct {
  Name name;
  const char* finals;   // the last byte after CSI or SS3
  const char* numbers;  // the number after CSI, before "~"
} Usual[] = {{Name::Up, "A", ""},      {Name::Down, "B", ""},   {Name::Right, "C", ""},
             {Name::Left, "D", ""},    {Name::Home, "H", "17"}, {Name::End, "F", "48"},
             {Name::Insert, "", "2"},  {Name::Delete, "", "3"}, {Name::PageUp, "", "5"},
             {Name::PageDown, "", "6"}};

const struct {
  const char* sequence;
  Name name;
} Others[] = {
    {"\033[Z", Name::BackTab},
    {"\033OM", Name::Return},  // of the keypad
    // rxvt: an arrow with Shift, and with Control
    {"\033[a", Name::Up},
    {"\033[b", Name::Down},
    {"\033[c", Name::Right},
    {"\033[d", Name::Left},
    {"\033Oa", Name::Up},
    {"\033Ob", Name::Down},
    {"\033Oc", Name::WordRight},
    {"\033Od", Name::WordLeft},
};

const struct {
  const char* capability;
  Name name;
} InTerminfo[] = {{"kcub1", Name::Left},     {"kcuf1", Name::Right},    {"kcuu1", Name::Up},
                  {"kcud1", Name::Down},     {"khome", Name::Home},     {"kend", Name::End},
                  {"kdch1", Name::Delete},   {"kich1", Name::Insert},   {"kbs", Name::Backspace},
                  {"kcbt", Name::BackTab},   {"kpp", Name::PageUp},     {"knp", Name::PageDown},
                  {"kent", Name::Return},    {"kLFT3", Name::WordLeft}, {"kRIT3", Name::WordRight},
                  {"kLFT5", Name::WordLeft}, {"kRIT5", Name::WordRight}};

const char* Find(const char* capability) {
  const char* found = tigetstr(capability);
  return found == nullptr || found == reinterpret_cast<const char*>(-1) ? "" : found;
}

}  // namespace

YcluiKeyTable::YcluiKeyTable() {
  for (const auto& usual : Usual) addUsual(usual.name, usual.finals, usual.numbers);
  for (const auto& other : Others) add(other.sequence, other.name);
}

// A description that the host has in use stays so.
YcluiKeyTable YcluiKeyTable::OfTerminal() {
  YcluiKeyTable table;
  TERMINAL* const before = set_curterm(nullptr);
  int result = 0;
  if (setupterm(nullptr, STDOUT_FILENO, &result) == 0) table.addFromTerminfo();
  TERMINAL* const description = set_curterm(before);
  if (description != nullptr) del_curterm(description);
  return table;
}

// A key without a meaning is in the table too if its sequence does not have the usual form, or it
// would be read as something that was typed.
void YcluiKeyTable::addFromTerminfo() {
  for (NCURSES_CONST char* const* name = strnames; *name != nullptr; ++name) {
    const std::string sent = **name == 'k' ? Find(*name) : "";
    if (find(sent).length < sent.size()) add(sent, Name::None);
  }
  for (const auto& key : InTerminfo) add(Find(key.capability), key.name);
}

void YcluiKeyTable::add(std::string_view sequence, YcluiKeyName name) {
  if (sequence.size() > 1 && sequence[0] == '\033') names_[std::string(sequence)] = name;
}

void YcluiKeyTable::addUsual(YcluiKeyName name, std::string_view finals, std::string_view numbers) {
  const std::string csi = "\033[";
  const std::string ss3 = "\033O";
  for (const char final : finals) {
    add(csi + final, name);
    add(ss3 + final, name);
  }
  // Of rxvt: Shift, Control, both.
  for (const char number : numbers) {
    for (const char final : {'~', '$', '^', '@'}) add(csi + number + final, name);
  }
  for (int modifier = 2; modifier <= LastModifier; ++modifier) {
    const YcluiKeyName modified = WithModifier(name, modifier);
    const std::string parameter = std::to_string(modifier);
    for (const char final : finals) {
      add(csi + "1;" + parameter + final, modified);
      add(csi + parameter + final, modified);
      add(ss3 + parameter + final, modified);
    }
    for (const char number : numbers) add(csi + number + ";" + parameter + "~", modified);
  }
}

YcluiKeyTable::Match YcluiKeyTable::find(std::string_view bytes) const {
  Match match;
  for (std::size_t length = 1; length <= bytes.size(); ++length) {
    const std::string_view beginning = bytes.substr(0, length);
    auto next = names_.lower_bound(beginning);
    const bool isKnown = next != names_.end() && next->first == beginning;
    if (isKnown) {
      match.length = length;
      match.name = next->second;
      ++next;
    }
    const bool goesOn = next != names_.end() && next->first.starts_with(beginning);
    match.isOpen = goesOn && length == bytes.size();
    if (!goesOn) break;
  }
  return match;
}
