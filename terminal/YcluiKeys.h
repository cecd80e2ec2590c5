// From the bytes of a keyboard to keys.

#ifndef TERMINAL_YCLUIKEYS_H_
#define TERMINAL_YCLUIKEYS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YEncoding.h"
#include "foundation/YTextConverter.h"
#include "terminal/YcluiKeyTable.h"

// Text in keys is in the encoding inside the process.
struct YcluiKey {
  enum Kind {
    Text,      // `bytes` is one character
    Named,     // `name`
    Control,   // `letter` is one of a to z, blank, _ \ ] ^
    Alt,       // `letter` is an ASCII character, in lower case, or 0x7F for Alt-Backspace
    Paste,     // `bytes` is a piece of a pasted text; the only control bytes are newlines and tabs
    PasteEnd,  // all of the paste has come; a paste may have no piece
    Invalid,   // not a character inside the process; `bytes` is a message about it, in ASCII
  };
  Kind kind = Text;
  YcluiKeyName name = YcluiKeyName::None;
  char letter = '\0';
  std::string bytes;
};

// The same bytes make the same keys in whatever pieces they are fed, but for the pieces of a paste.
// Bytes 8 and 127 and the erase byte are Backspace, 10 and 13 are Return. Keys without a meaning
// here, replies of the terminal and whatever else begins with an Escape make no key. Characters of
// a paste that are not characters inside come as Invalid between its pieces.
class YQRT_API YcluiKeys {
 public:
  // `erase` is the erase byte of the terminal's driver, 0 for none. `encoding` is that of the
  // terminal, by a name that iconv knows; an unknown one means UTF-8.
  YcluiKeys(YcluiKeyTable table, char erase, const char* encoding = YEncoding::OfLocale());

  void feed(std::string_view bytes);
  // The next key. False when no bytes are left, or those left may be the beginning of a key.
  bool next(YcluiKey& key);

  // Whether the bytes left may be a complete key or the beginning of another one. The caller waits
  // for a short time; if no more bytes arrive, it calls settle(), and they are complete.
  bool waits() const;
  void settle() { settled_ = bytes_.size(); }

  // Drops all bytes left but the mark at the end of a paste, or a beginning of that.
  void drop();
  bool isPasting() const { return isPasting_; }

 private:
  struct Character;

  YcluiKeyTable table_;
  char erase_;
  std::string encoding_;
  YTextConverter toUtf8_;  // not open for UTF-8
  std::string bytes_;
  std::size_t position_ = 0;  // of the first byte left
  std::size_t settled_ = 0;   // bytes before this offset do not wait for those after it
  bool isPasting_ = false;
  bool afterReturn_ = false;  // in a paste: a newline that follows belongs to the return

  std::string_view rest() const { return std::string_view(bytes_).substr(position_); }
  // The bytes that a sequence can consist of, and whether they are complete.
  std::string_view sequenceBytes(bool& isComplete) const;
  bool isErase(char byte) const {
    return byte == '\b' || byte == '\x7F' || (byte == erase_ && erase_ != '\0');
  }
  bool skip(std::size_t length) {
    position_ += length;
    return false;
  }
  bool accept(std::size_t length, YcluiKey& key, YcluiKey::Kind kind, char letter);
  bool acceptNamed(std::size_t length, YcluiKey& key, YcluiKeyName name);
  bool nextOutsidePaste(YcluiKey& key);
  bool nextControl(YcluiKey& key);
  bool nextAfterEscape(YcluiKey& key);
  bool nextAlt(YcluiKey& key, bool isComplete);
  bool nextText(YcluiKey& key);
  bool nextInPaste(YcluiKey& key);
  bool pasteOne(std::string& to);
  Character characterAt(std::size_t position);
  std::size_t decode(std::string_view text, std::string& utf8);
  std::string messageAbout(const Character& character) const;
};

#endif  // TERMINAL_YCLUIKEYS_H_
