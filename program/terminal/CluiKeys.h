// Splits the bytes from the keyboard into keys.

#ifndef PROGRAM_TERMINAL_CLUIKEYS_H_
#define PROGRAM_TERMINAL_CLUIKEYS_H_

#include <string>
#include <string_view>

#include "program/terminal/CluiCapabilities.h"
#include "program/text/CluiEncoding.h"

// The control bytes that represent named keys.
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
    Control,  // one control byte
    Text,     // one character, or invalid bytes, in the encoding of the terminal
    Erase,    // deletes the last character
    PasteBegin,
    Paste,  // a piece of the pasted text
    PasteEnd,
  };
  Kind kind = Control;
  std::string bytes;
};

class CluiKeys {
 public:
  // `erase` is the erase character of the terminal's driver.
  CluiKeys(const CluiCapabilities& capabilities, CluiEncoding& encoding, char erase)
      : capabilities_(capabilities), encoding_(encoding), erase_(erase) {}

  void feed(std::string_view bytes) { bytes_.append(bytes); }
  // The next key. False when no bytes are left, or those left may be the beginning of a key.
  bool next(CluiKey& key);

  // Whether the bytes left may be the Escape key or the beginning of another key. The caller waits
  // for a short time; if no more bytes arrive, it calls settle(), and they are complete keys.
  bool waits() const;
  void settle() { settled_ = true; }

  // Drops all bytes left but the mark at the end of a paste.
  void drop();

 private:
  const CluiCapabilities& capabilities_;
  CluiEncoding& encoding_;
  char erase_;
  std::string bytes_;
  std::size_t position_ = 0;  // of the first byte left
  bool settled_ = false;      // the bytes left are not the beginning of a longer key
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
