#include "terminal/YcluiKeys.h"

#include <algorithm>
#include <utility>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"

namespace {

constexpr char Escape = '\x1B';
constexpr char Bell = '\x07';
constexpr char Erase = '\x7F';
constexpr std::string_view PasteBegins = "\033[200~";
constexpr std::string_view PasteEnds = "\033[201~";
constexpr std::size_t LongestCharacter = 4;
constexpr std::size_t LongestSequence = 4096;

bool IsFinal(char byte) {
  return byte >= '@' && byte <= '~';
}
bool IsParameter(char byte) {
  return byte >= '0' && byte <= '?';
}
bool IsIntermediate(char byte) {
  return byte >= ' ' && byte <= '/';
}

// Of the sequence at the beginning of a text. If it is open, more bytes must come; otherwise a
// length of 0 means that there is none.
struct Extent {
  std::size_t length = 0;
  bool isOpen = false;
};

// After the parameters, which end at this offset, a final byte must follow. Without it the sequence
// is broken off.
Extent ExtentUpTo(std::size_t end, std::string_view text) {
  if (end == text.size()) return {0, true};
  if (IsFinal(text[end])) return {end + 1, false};
  return {end > 2 ? end : 0, false};
}

Extent ExtentOfCsi(std::string_view text) {
  std::size_t end = 2;
  if (end < text.size() && text[end] == '[') return ExtentUpTo(3, text);  // F1 of the Linux console
  bool isNumber = true;
  for (; end < text.size() && IsParameter(text[end]); ++end) isNumber &= text[end] < '<';
  const bool isOfRxvt = isNumber && end > 2 && end < text.size() && text[end] == '$';
  if (isOfRxvt) return {end + 1, false};
  while (end < text.size() && IsIntermediate(text[end])) ++end;
  return ExtentUpTo(end, text);
}

Extent ExtentOfSs3(std::string_view text) {
  std::size_t end = 2;
  while (end < text.size() && YIsDigit(text[end])) ++end;
  return ExtentUpTo(end, text);
}

// A reply of the terminal: an operating system command, or a device control string.
Extent ExtentOfReply(std::string_view text) {
  if (text.size() == 2) return {0, true};
  if (!IsParameter(text[2]) && !IsIntermediate(text[2])) return {};
  for (std::size_t end = 3; end < text.size(); ++end) {
    if (text[end] == Bell) return {end + 1, false};
    if (text[end] == Escape && end + 1 == text.size()) return {0, true};
    if (text[end] == Escape && text[end + 1] == '\\') return {end + 2, false};
    if (YIsControl(text[end])) return {end, false};
  }
  return {0, true};
}

Extent ExtentOfAnyLength(std::string_view text) {
  if (text.size() == 1) return {0, true};
  switch (text[1]) {
    case '[':
      return ExtentOfCsi(text);
    case 'O':
      return ExtentOfSs3(text);
    case ']':
    case 'P':
      return ExtentOfReply(text);
    default:
      return {};
  }
}

// Of what begins with an Escape in one of the usual forms.
Extent ExtentOfUsual(std::string_view text) {
  const Extent extent = ExtentOfAnyLength(text.substr(0, LongestSequence));
  return extent.isOpen && text.size() >= LongestSequence ? Extent{LongestSequence, false} : extent;
}

// The number of bytes of the UTF-8 character that this byte begins, 1 also for one that begins
// none.
std::size_t LengthInUtf8(char first) {
  const auto lead = static_cast<unsigned char>(first);
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  return lead >= 0xC2 && lead <= 0xDF ? 2 : 1;
}

// As YcluiKeys::decode.
std::size_t DecodeUtf8(std::string_view text, std::string& utf8) {
  if (text.empty()) return 0;
  const std::size_t length = LengthInUtf8(text.front());
  for (std::size_t i = 1; i < length; ++i) {
    if (i == text.size()) return 0;
    if ((text[i] & 0xC0) != 0x80) return i;
  }
  std::u32string character;
  if (YCharacters::AppendFromUtf8(text.substr(0, length), character) == length)
    utf8 = text.substr(0, length);
  return length;
}

std::string Hexadecimal(unsigned long number, std::size_t digits) {
  std::string text;
  for (; number > 0 || text.size() < digits; number /= 16) text += "0123456789ABCDEF"[number % 16];
  return {text.rbegin(), text.rend()};
}

YcluiKeyName WithAlt(YcluiKeyName name) {
  if (name == YcluiKeyName::Left) return YcluiKeyName::WordLeft;
  return name == YcluiKeyName::Right ? YcluiKeyName::WordRight : name;
}

}  // namespace

struct YcluiKeys::Character {
  std::size_t length = 0;     // of its bytes from the keyboard; 0 while they are incomplete
  std::u32string characters;  // empty when they are none
  std::string bytes;          // inside the process; empty when it does not exist there
};

YcluiKeys::YcluiKeys(YcluiKeyTable table, char erase, const char* encoding)
    : table_(std::move(table)), erase_(erase), encoding_(encoding) {
  if (encoding_ != "UTF-8" && !toUtf8_.open(encoding, "UTF-8")) encoding_ = "UTF-8";
}

void YcluiKeys::feed(std::string_view bytes) {
  bytes_.erase(0, position_);
  settled_ -= std::min(settled_, position_);
  position_ = 0;
  bytes_.append(bytes);
}

bool YcluiKeys::next(YcluiKey& key) {
  while (!rest().empty()) {
    const std::size_t before = position_;
    key = {};
    if (isPasting_ ? nextInPaste(key) : nextOutsidePaste(key)) return true;
    if (position_ == before) return false;
  }
  return false;
}

// A paste always goes on: its end must come.
bool YcluiKeys::waits() const {
  return !isPasting_ && settled_ <= position_ && rest().starts_with(Escape);
}

void YcluiKeys::drop() {
  std::string kept;
  const std::string_view text = rest();
  if (isPasting_ && text.find(PasteEnds) != text.npos) {
    kept = PasteEnds;
  } else if (isPasting_) {
    const std::size_t last = text.rfind(Escape);
    if (last != text.npos && PasteEnds.starts_with(text.substr(last))) kept = text.substr(last);
  }
  bytes_ = kept;
  position_ = settled_ = 0;
}

std::string_view YcluiKeys::sequenceBytes(bool& isComplete) const {
  isComplete = position_ < settled_;
  return isComplete ? rest().substr(0, settled_ - position_) : rest();
}

bool YcluiKeys::accept(std::size_t length, YcluiKey& key, YcluiKey::Kind kind, char letter) {
  position_ += length;
  key.kind = kind;
  key.letter = letter;
  return true;
}

bool YcluiKeys::acceptNamed(std::size_t length, YcluiKey& key, YcluiKeyName name) {
  key.name = name;
  return accept(length, key, YcluiKey::Named, '\0');
}

// --- Outside a paste. These return false without a key, also when they have skipped bytes.

bool YcluiKeys::nextOutsidePaste(YcluiKey& key) {
  const char byte = rest().front();
  if (byte == Escape) return nextAfterEscape(key);
  if (isErase(byte)) return acceptNamed(1, key, YcluiKeyName::Backspace);
  return YIsControl(byte) ? nextControl(key) : nextText(key);
}

bool YcluiKeys::nextControl(YcluiKey& key) {
  const char byte = rest().front();
  if (byte == '\t') return acceptNamed(1, key, YcluiKeyName::Tab);
  if (byte == '\r' || byte == '\n') return acceptNamed(1, key, YcluiKeyName::Return);
  if (byte == '\0') return accept(1, key, YcluiKey::Control, ' ');
  return accept(1, key, YcluiKey::Control, static_cast<char>(byte + (byte < Escape ? 0x60 : 0x40)));
}

// Some terminals send another Escape before a key with Alt.
bool YcluiKeys::nextAfterEscape(YcluiKey& key) {
  bool isComplete = false;
  const std::string_view all = sequenceBytes(isComplete);
  const bool hasAlt = all.size() > 2 && all[1] == Escape && (all[2] == '[' || all[2] == 'O');
  const std::string_view text = all.substr(hasAlt ? 1 : 0);
  const YcluiKeyTable::Match match = table_.find(text);
  Extent extent = {match.length, match.isOpen};
  if (match.length == 0 && !match.isOpen) extent = ExtentOfUsual(text);
  extent.isOpen |= all == "\033\033";
  if (extent.isOpen && !isComplete) return false;
  if (extent.length == 0) return nextAlt(key, isComplete);
  isPasting_ = text.substr(0, extent.length) == PasteBegins;
  const std::size_t length = extent.length + (hasAlt ? 1 : 0);
  if (match.name != YcluiKeyName::None)
    return acceptNamed(length, key, hasAlt ? WithAlt(match.name) : match.name);
  return skip(length);
}

// An Escape that begins no sequence. An unfinished one of more than two bytes is ignored.
bool YcluiKeys::nextAlt(YcluiKey& key, bool isComplete) {
  const std::string_view all = sequenceBytes(isComplete);
  const char byte = all.size() > 1 ? all[1] : Escape;
  if (isErase(byte)) return accept(2, key, YcluiKey::Alt, Erase);
  if (YIsControl(byte)) return acceptNamed(1, key, YcluiKeyName::Escape);
  const bool isUnfinished = all.size() > 2 && ExtentOfUsual(all).isOpen;
  if (isUnfinished) return skip(all.size());
  if (YCharacters::IsAscii({&byte, 1})) {
    const bool isUpper = byte >= 'A' && byte <= 'Z';
    return accept(2, key, YcluiKey::Alt, static_cast<char>(isUpper ? byte + 0x20 : byte));
  }
  const Character character = characterAt(position_ + 1);
  if (character.length > 0) return skip(1 + character.length);
  return isComplete && acceptNamed(1, key, YcluiKeyName::Escape);
}

bool YcluiKeys::nextText(YcluiKey& key) {
  const Character character = characterAt(position_);
  if (character.length == 0) return false;
  const bool exists = !character.bytes.empty();
  key.bytes = exists ? character.bytes : messageAbout(character);
  return accept(character.length, key, exists ? YcluiKey::Text : YcluiKey::Invalid, '\0');
}

// --- In a paste

bool YcluiKeys::nextInPaste(YcluiKey& key) {
  if (rest().starts_with(PasteEnds)) {
    isPasting_ = afterReturn_ = false;
    return accept(PasteEnds.size(), key, YcluiKey::PasteEnd, '\0');
  }
  while (pasteOne(key.bytes)) {
  }
  if (!key.bytes.empty()) return accept(0, key, YcluiKey::Paste, '\0');
  return !rest().empty() && !YIsControl(rest().front()) && nextText(key);
}

// False before the mark or a beginning of it, and before a character that is incomplete or does not
// exist inside.
bool YcluiKeys::pasteOne(std::string& to) {
  const std::string_view text = rest();
  if (text.empty() || text.starts_with(PasteEnds) || PasteEnds.starts_with(text)) return false;
  const char byte = text.front();
  if (YIsControl(byte)) {
    if (byte == '\t') to += byte;
    if (byte == '\r' || (byte == '\n' && !afterReturn_)) to += '\n';
    afterReturn_ = byte == '\r';
    ++position_;
    return true;
  }
  afterReturn_ = false;
  const Character character = characterAt(position_);
  if (character.bytes.empty()) return false;
  to += character.bytes;
  position_ += character.length;
  return true;
}

// --- Characters

YcluiKeys::Character YcluiKeys::characterAt(std::size_t position) {
  Character character;
  std::string utf8;
  character.length = decode(std::string_view(bytes_).substr(position), utf8);
  YCharacters::AppendFromUtf8(utf8, character.characters);
  if (!YEncoding::IsDoubleByte()) {
    character.bytes = utf8;
    return character;
  }
  // Characters that mean lone bytes would make other characters of the bytes around them.
  const bool hasLone = std::ranges::any_of(character.characters, YCharacters::IsLoneByte);
  if (hasLone || !YCharacters::AppendBytes(character.characters, character.bytes))
    character.bytes.clear();
  return character;
}

// Stores the first character of the text. Returns its length, or that of bytes that are not a
// character, which end before a byte that may begin one; 0 when more must come.
std::size_t YcluiKeys::decode(std::string_view text, std::string& utf8) {
  if (!toUtf8_.isOpen()) return DecodeUtf8(text, utf8);
  for (std::size_t length = 1; length <= LongestCharacter; ++length) {
    if (length > text.size()) return 0;
    if (length > 1 && YIsControl(text[length - 1])) return length - 1;
    if (toUtf8_.convert(text.substr(0, length), utf8) == length) return length;
    utf8.clear();
  }
  return 1;
}

std::string YcluiKeys::messageAbout(const Character& character) const {
  if (!character.characters.empty()) {
    return "the character U+" + Hexadecimal(character.characters.front(), 4) +
           " does not exist in " + YEncoding::InsideInWords();
  }
  std::string message = character.length == 1 ? "the byte" : "the bytes";
  for (const char byte : rest().substr(0, character.length))
    message += ' ' + Hexadecimal(static_cast<unsigned char>(byte), 2);
  return message + (character.length == 1 ? " is" : " are") + " not a character of " + encoding_;
}
