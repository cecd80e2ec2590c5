#include "parser/YcluiLogEncoding.h"

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

bool YcluiLogEncoding::Fits(std::FILE* stream) {
  if (std::fseek(stream, 0, SEEK_SET) != 0) return true;
  YcluiLogEncoding log;
  for (int byte = getc_unlocked(stream); byte != EOF && log.fits(); byte = getc_unlocked(stream)) {
    log.add(static_cast<char>(byte));
  }
  const bool isWhole = log.bytes_ == 0;
  std::rewind(stream);
  return log.fits() && isWhole;
}

bool YcluiLogEncoding::Fits(const char* name) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(name, error)) return true;
  std::FILE* const stream = std::fopen(name, "r");
  if (stream == nullptr) return true;
  const bool fits = Fits(stream);
  std::fclose(stream);
  return fits;
}
