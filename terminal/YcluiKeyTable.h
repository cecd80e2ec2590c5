// The byte sequences that named keys send.

#ifndef TERMINAL_YCLUIKEYTABLE_H_
#define TERMINAL_YCLUIKEYTABLE_H_

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"

enum class YcluiKeyName {
  None,  // a key without a meaning here
  Left,
  Right,
  Up,
  Down,
  Home,
  End,
  Delete,
  Insert,
  Backspace,
  Tab,
  BackTab,
  Return,
  Escape,
  PageUp,
  PageDown,
  WordLeft,   // Left with Control or Alt
  WordRight,  // Right with Control or Alt
};

class YQRT_API YcluiKeyTable {
 public:
  // The sequences of xterm, the Linux console, rxvt and terminals like them. With other keys than
  // Left and Right the modifiers make no difference.
  YcluiKeyTable();
  // These and those of the terminal that TERM names. Where both differ, terminfo is right.
  static YcluiKeyTable OfTerminal();

  // Replaces what the sequence meant. One that does not begin with an Escape, or is only that, is
  // not added: control bytes have meanings of their own.
  void add(std::string_view sequence, YcluiKeyName name);

  // The longest sequence that the bytes begin with.
  struct Match {
    std::size_t length = 0;  // 0 for none
    YcluiKeyName name = YcluiKeyName::None;
    bool isOpen = false;  // the bytes may become a longer one
  };
  Match find(std::string_view bytes) const;

 private:
  std::map<std::string, YcluiKeyName, std::less<>> names_;

  void addUsual(YcluiKeyName name, std::string_view finals, std::string_view numbers);
  void addFromTerminfo();
};

#endif  // TERMINAL_YCLUIKEYTABLE_H_
