#include "parser/YcluiLogReader.h"

#include "foundation/YKanji.h"

bool YcluiLogReader::read() {
  line_.truncate(0);
  inFile_.truncate(0);
  escapes_.clear();
  for (int byte = get(); byte != EOF; byte = get()) {
    if (byte == '\n' && !inString_) return endLine(true);
    if (byte == '"') inString_ = !inString_;
    add(byte);
    if (byte == '\\') readEscaped();
    if (byte >= 0x80 && isDoubleByte_) readTrail(byte);
  }
  return endLine(false);
}

int YcluiLogReader::get() {
  const int byte = getc_unlocked(stream_);
  if (byte != EOF) ++bytes_;
  if (byte == '\n') ++ends_;
  return byte;
}

void YcluiLogReader::unget(int byte) {
  std::ungetc(byte, stream_);
  --bytes_;
  if (byte == '\n') --ends_;
}

void YcluiLogReader::add(int byte) {
  if (runLength_ == sizeof run_) addRun();
  run_[runLength_++] = static_cast<char>(byte);
}

void YcluiLogReader::addRun() {
  line_.concat(run_, runLength_);
  inFile_.concat(run_, runLength_);
  runLength_ = 0;
}

bool YcluiLogReader::endLine(bool follows) {
  addRun();
  return follows;
}

// In a log nothing in a string is escaped, while the lexer reads a backslash and the next byte as
// that byte. So two backslashes are added before a quote or backslash that follows a backslash.
void YcluiLogReader::readEscaped() {
  const int byte = get();
  if (byte == EOF) return;
  if (byte == '"' || byte == '\\') {
    addRun();
    escapes_.push_back(static_cast<long>(line_.length));
    line_ << "\\\\";
  }
  add(byte);
}

// Adds the second byte of a double-byte character, even when it has the value of a quote or a
// backslash.
void YcluiLogReader::readTrail(int lead) {
  const int byte = get();
  if (byte == EOF) return;
  const char pair[] = {static_cast<char>(lead), static_cast<char>(byte), '\0'};
  if (IsKanjiStart(pair) != 0) {
    add(byte);
  } else {
    unget(byte);
  }
}
