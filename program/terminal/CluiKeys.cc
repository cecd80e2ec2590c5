#include "program/terminal/CluiKeys.h"

#include <algorithm>

#include "foundation/YAscii.h"

namespace {

constexpr std::size_t LongestCharacter = 4;

std::size_t LengthInUtf8(unsigned char lead) {
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  return lead >= 0xC2 && lead <= 0xDF ? 2 : 1;
}

// The length of a key that is not in terminfo but begins with an Escape in the usual form: a CSI or
// SS3 sequence, or a character typed with Alt. 0 when the text has no such form, or when it may be
// the beginning of one, which sets `open`.
std::size_t LengthOfUnknown(std::string_view text, bool& open) {
  open = text.size() == 1;
  if (open || text[1] < ' ') return 0;
  if (text[1] != '[' && text[1] != 'O') return 2;
  std::size_t i = 2;
  if (text[1] == '[') {
    while (i < text.size() && text[i] >= 0x20 && text[i] < 0x40) ++i;
  }
  open = i == text.size();
  return open ? 0 : i + 1;
}

}  // namespace

bool CluiKeys::next(CluiKey& key) {
  if (rest().empty()) {
    bytes_.clear();
    position_ = 0;
    settled_ = false;
    return false;
  }
  if (pasting_) return takePaste(key);
  bool found = false;
  const bool taken = takeSequence(key, found);
  if (found) return taken;
  const char byte = rest().front();
  if (byte == erase_ || byte == '\x7F' || byte == '\b') return take(key, CluiKey::Erase, 1);
  if (byte == '\n') return takeControl(key, CluiKeyByte::Return, 1);
  return YIsControl(byte) ? takeControl(key, byte, 1) : takeCharacter(key);
}

bool CluiKeys::waits() const {
  return !rest().empty() && (pasting_ || rest().front() == CluiKeyByte::Escape);
}

// Keeps the mark at the end of a paste, also a part of it at the end of the bytes.
void CluiKeys::drop() {
  std::string kept;
  if (pasting_) {
    const std::string mark = pasteEnd();
    const std::size_t end = rest().find(mark);
    const std::size_t tail = std::min(rest().size(), mark.size() - 1);
    kept = end != std::string_view::npos ? mark : std::string(rest().substr(rest().size() - tail));
  }
  bytes_ = kept;
  position_ = 0;
  settled_ = false;
}

bool CluiKeys::take(CluiKey& key, CluiKey::Kind kind, std::size_t length) {
  key = {kind, std::string(rest().substr(0, length))};
  position_ += length;
  settled_ = false;
  return true;
}

bool CluiKeys::takeControl(CluiKey& key, char byte, std::size_t length) {
  take(key, CluiKey::Control, length);
  key.bytes.assign(1, byte);
  return true;
}

// Not empty during a paste, since bracketed paste needs both marks.
std::string CluiKeys::pasteEnd() const {
  const auto mark =
      std::find_if(capabilities_.keys.begin(), capabilities_.keys.end(),
                   [](const auto& known) { return known.second == CluiSequence::PasteEnd; });
  return mark == capabilities_.keys.end() ? "" : mark->first;
}

// A piece ends before bytes that may be the beginning of the mark.
bool CluiKeys::takePaste(CluiKey& key) {
  const std::string mark = pasteEnd();
  const std::string_view text = rest();
  const std::size_t end = text.find(mark);
  if (end == 0) {
    pasting_ = false;
    return take(key, CluiKey::PasteEnd, mark.size());
  }
  std::size_t length = std::min(end, text.size());
  for (std::size_t i = 1; end == std::string_view::npos && i < mark.size(); ++i) {
    if (text.ends_with(mark.substr(0, i))) length = text.size() - i;
  }
  if (length == 0 && settled_) length = 1;
  return length > 0 && take(key, CluiKey::Paste, length);
}

bool CluiKeys::beginsKey(std::string_view text) const {
  const auto next = capabilities_.keys.lower_bound(std::string(text));
  return next != capabilities_.keys.end() && next->first.size() > text.size() &&
         next->first.starts_with(text);
}

// Sets `found` when the bytes are, or may become, a key of several bytes.
bool CluiKeys::takeSequence(CluiKey& key, bool& found) {
  const std::string_view text = rest();
  found = text.front() == CluiKeyByte::Escape;
  if (!found) return false;
  CluiSequence meaning = CluiSequence::Other;
  std::size_t length = 0;
  for (std::size_t i = 1; i <= text.size() && (i == 1 || beginsKey(text.substr(0, i - 1))); ++i) {
    const auto known = capabilities_.keys.find(std::string(text.substr(0, i)));
    if (known == capabilities_.keys.end()) continue;
    length = i;
    meaning = known->second;
  }
  bool open = length == 0 && beginsKey(text);
  if (length == 0 && !open) length = LengthOfUnknown(text, open);
  if (length == 0) return (!open || settled_) && takeControl(key, CluiKeyByte::Escape, 1);
  switch (meaning) {
    case CluiSequence::Up:
      return takeControl(key, CluiKeyByte::Up, length);
    case CluiSequence::Down:
      return takeControl(key, CluiKeyByte::Down, length);
    case CluiSequence::Return:
      return takeControl(key, CluiKeyByte::Return, length);
    case CluiSequence::Erase:
      return take(key, CluiKey::Erase, length);
    case CluiSequence::PasteBegin:
      pasting_ = true;
      return take(key, CluiKey::PasteBegin, length);
    case CluiSequence::PasteEnd:
    case CluiSequence::Other:
      break;
  }
  position_ += length;
  settled_ = false;
  return next(key);
}

bool CluiKeys::takeCharacter(CluiKey& key) {
  const std::size_t length = lengthOfCharacter();
  return length > 0 && take(key, CluiKey::Text, length);
}

// 0 when the character is incomplete. Invalid bytes end before a byte that may begin a character.
std::size_t CluiKeys::lengthOfCharacter() {
  const std::string_view text = rest();
  const std::size_t most = encoding_.isUtf8()
                               ? LengthInUtf8(static_cast<unsigned char>(text.front()))
                               : LongestCharacter;
  std::string system;
  CluiFault fault;
  for (std::size_t length = 1; length <= most; ++length) {
    if (length > text.size()) return 0;
    if (length > 1 && YIsControl(text[length - 1])) return length - 1;
    if (encoding_.toSystem(text.substr(0, length), system, fault)) return length;
    if (fault.kind == CluiFault::Lacking) return length;
  }
  return 1;
}
