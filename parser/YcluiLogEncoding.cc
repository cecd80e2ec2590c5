#include "parser/YcluiLogEncoding.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"

void YcluiLogEncoding::add(char byte) {
  const bool isUtf8 = !YEncoding::IsDoubleByte();
  if (static_cast<unsigned char>(byte) < 128) {
    if (bytes_ > 0) fits_ = false;
    bytes_ = 0;
  } else if (writer_ == Writer::Unknown) {
    if (isUtf8 && !fitsInCharacter(byte)) fits_ = false;
  } else if ((writer_ == Writer::Utf8) != isUtf8) {
    fits_ = false;
  }
  if (byte == '\n') return endLine();
  if (byte != '\r' && length_ < sizeof line_) line_[length_++] = byte;
}

void YcluiLogEncoding::endLine() {
  const std::string_view line(line_, length_);
  length_ = 0;
  if (line == Opening) {
    writer_ = Writer::ShiftJis;
    openingLines_ = 1;
  } else if (openingLines_ == 1 && line == "#") {
    openingLines_ = 2;
  } else {
    if (openingLines_ == 2 && line == Mark) writer_ = Writer::Utf8;
    openingLines_ = 0;
  }
}

// Whether the byte continues a character of UTF-8, or begins one.
bool YcluiLogEncoding::fitsInCharacter(char byte) {
  character_[bytes_++] = byte;
  const auto first = static_cast<unsigned char>(character_[0]);
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (bytes_ < length) return true;
  const std::size_t read = YCharacters::LengthAt({character_, bytes_});
  bytes_ = 0;
  return read == length;
}

bool YcluiLogEncoding::Fits(const std::string& name) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(name, error)) return true;
  std::FILE* const stream = std::fopen(name.c_str(), "r");
  if (stream == nullptr) return true;
  YcluiLogEncoding log;
  for (int byte = getc_unlocked(stream); byte != EOF && log.fits_; byte = getc_unlocked(stream)) {
    log.add(static_cast<char>(byte));
  }
  std::fclose(stream);
  return log.fits_ && log.bytes_ == 0;
}
