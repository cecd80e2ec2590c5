// Classification of bytes as ASCII characters, independent of the locale.

#ifndef FOUNDATION_YASCII_H_
#define FOUNDATION_YASCII_H_

// Space, tab, line feed, vertical tab, form feed and carriage return.
constexpr bool YIsWhiteSpace(char byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

constexpr bool YIsDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

constexpr bool YIsLower(char byte) {
  return byte >= 'a' && byte <= 'z';
}

constexpr bool YIsUpper(char byte) {
  return byte >= 'A' && byte <= 'Z';
}

constexpr bool YIsLetter(char byte) {
  return YIsLower(byte) || YIsUpper(byte);
}

// The control characters of ASCII, among them NUL and DEL.
constexpr bool YIsControl(char byte) {
  return (byte >= '\0' && byte < ' ') || byte == '\x7f';
}

// The lower case of an ASCII capital; any other byte unchanged.
constexpr char YLowerCase(char byte) {
  return YIsUpper(byte) ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

#endif  // FOUNDATION_YASCII_H_
