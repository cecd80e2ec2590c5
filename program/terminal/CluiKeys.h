// From bytes of the keyboard to keys.

#ifndef PROGRAM_TERMINAL_CLUIKEYS_H_
#define PROGRAM_TERMINAL_CLUIKEYS_H_

#include <string>
#include <string_view>

#include "program/terminal/CluiCapabilities.h"
#include "program/text/CluiEncoding.h"

// The control bytes by which named keys are known.
namespace CluiKeyByte {
constexpr char Interrupt = '\x03';  // Control-C
constexpr char Leave = '\x04';      // Control-D
constexpr char Erase = '\x08';
constexpr char Tab = '\x09';
constexpr char Return = '\x0D';
constexpr char Down = '\x0E';
constexpr char Up = '\x10';
constexpr char Suspend = '\x1A';  // Control-Z
constexpr char Escape = '\x1B';
}  // namespace CluiKeyByte

struct CluiKey {
  enum Kind {
    Control,     // one byte, of the table above or any other control byte
    Text,        // one character, in the encoding of the terminal; it may be no good one
    Erase,       // the last character is to go
    PasteBegin,  // what comes until PasteEnd is pasted
    Paste,       // a piece of it, as it is
    PasteEnd,
  };
  Kind kind = Control;
  std::string bytes;
};

class CluiKeys {
 public:
  // `erase` is what the terminal's driver takes for the key that deletes.
  CluiKeys(const CluiCapabilities& capabilities, CluiEncoding& encoding, char erase)
      : capabilities_(capabilities), encoding_(encoding), erase_(erase) {}

  void feed(std::string_view bytes) { bytes_.append(bytes); }
  // The next key, or false when the bytes are used up or more must come.
  bool next(CluiKey& key);

  // Whether what is left may be the Escape key or the beginning of another one, which only time
  // tells. When enough of it has passed, it is the Escape key.
  bool waits() const;
  void settle() { settled_ = true; }

  // Forgets all keys that came, but for the end of a paste.
  void drop();

 private:
  const CluiCapabilities& capabilities_;
  CluiEncoding& encoding_;
  char erase_;
  std::string bytes_;
  std::size_t position_ = 0;  // what of them has been answered
  bool settled_ = false;      // an Escape is no beginning
  bool pasting_ = false;

  std::string_view rest() const { return std::string_view(bytes_).substr(position_); }
  bool take(CluiKey& key, CluiKey::Kind kind, std::size_t length);
  bool takeControl(CluiKey& key, char byte, std::size_t length);
  std::string pasteEnd() const;
  bool takePaste(CluiKey& key);
  bool takeSequence(CluiKey& key, bool& found);
  bool takeCharacter(CluiKey& key);
  std::size_t lengthOfCharacter();
  bool beginsKey(std::string_view text) const;
};

#endif  // PROGRAM_TERMINAL_CLUIKEYS_H_
