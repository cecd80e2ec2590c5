#include "parser/YcluiPlayback.h"

#include <algorithm>
#include <cstring>

#include "foundation/YErr.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiDepth.h"
#include "parser/YcluiLogEncoding.h"
#include "parser/YcluiPlayedToken.h"

namespace {

// Converts an offset in the text for the lexer to one in the text of the file.
long OffsetInFile(long offset, const YcluiLogReader::Escapes* escapes) {
  if (escapes == nullptr) return offset;
  const auto added = std::lower_bound(escapes->begin(), escapes->end(), offset) - escapes->begin();
  return offset - 2 * static_cast<long>(added);
}

// What can be read only once is examined line by line.
bool Fits(YcluiLogEncoding& encoding, const YcluiLogReader& reader) {
  for (const char* p = reader.inFile(); *p != '\0'; ++p) encoding.add(*p);
  encoding.add('\n');
  return encoding.fits();
}

}  // namespace

bool YcluiPlayback::play(YcluiLogFile file) {
  if (isPlayed(file)) return cluiWarning(YErrFileIsPlayed);
  if (depth_ >= YcluiMostNestedPlaybacks) return cluiError(YErrTooDeep);
  if (!YcluiLogEncoding::Fits(file)) return cluiWarning(YErrOtherEncoding);
  if (file.open("r") == 0) return cluiWarning(YErrNotOpened);
  const YcluiDepth depth(depth_);
  PlayedFile played;
  played.file = file;
  played.number = ++filesPlayed_;
  files_.push(played);
  return playTop();
}

// At any level, paused ones included.
bool YcluiPlayback::isPlayed(const YcluiLogFile& file) const {
  for (int i = 0; i < files_.count(); ++i) {
    if (files_.at(i).file == file) return true;
  }
  return false;
}

// A line of one file may call resume itself and finish the others.
bool YcluiPlayback::resume() {
  if (!isPaused_) return false;
  if (depth_ >= YcluiMostNestedPlaybacks) return cluiError(YErrTooDeep);
  const YcluiDepth depth(depth_);
  isPaused_ = false;
  for (int levels = files_.count(); levels > 0 && files_.isEmpty() == 0; --levels) {
    if (isPaused_) return true;
    if (!resumeTop()) return false;
  }
  return true;
}

// Plays the top file from its beginning.
bool YcluiPlayback::playTop() {
  isRunning_ = true;
  const std::uint64_t number = files_.topSlot().number;
  std::FILE* stream = files_.topSlot().file;
  YcluiLogReader reader(stream);
  YcluiLogEncoding encoding;
  const bool isPipe = std::fseek(stream, 0, SEEK_CUR) != 0;
  for (bool follows = true; follows;) {
    PlayedFile& file = files_.topSlot();
    file.line = reader.ends() + 1;
    follows = reader.read();
    file.ends = reader.ends();
    file.bytes = reader.bytes();
    if (!follows) endReading(stream);
    if (isPipe && !Fits(encoding, reader)) {
      finishTop();
      return cluiWarning(YErrOtherEncoding);
    }
    playText(reader.line(), reader.inFile(), &reader.escapes());
    if (stopsAfterLine(number)) return true;
  }
  return finishTop();
}

// Plays the rest of the top file, in pieces.
bool YcluiPlayback::resumeTop() {
  isRunning_ = true;
  const std::uint64_t number = files_.topSlot().number;
  std::FILE* stream = files_.topSlot().file;
  char piece[YcluiLongestPiece + 1];
  while (std::fgets(piece, sizeof piece, stream) != nullptr) {
    PlayedFile& file = files_.topSlot();
    const std::size_t length = std::strlen(piece);
    file.line = file.ends + 1;
    file.bytes += static_cast<long>(length);
    if (length > 0 && piece[length - 1] == '\n') ++file.ends;
    if (piece[0] != '\n') playText(piece, piece, nullptr);
    if (stopsAfterLine(number)) return true;
  }
  endReading(stream);
  return finishTop();
}

void YcluiPlayback::playText(const char* text, const char* inFile, const Escapes* escapes) {
  const int level = files_.count() - 1;
  const std::uint64_t number = ++textsPlayed_;
  PlayedFile& file = files_.topSlot();
  file.textNumber = number;
  file.text = inFile;
  file.escapes = escapes;
  file.begin = input_.nextOffset();
  input_.interpretPlayed(text);
  // A command may have finished the file, and started another at its level.
  const bool isThere = level < files_.count() && files_.at(level).textNumber == number;
  if (isThere) files_.at(level).text = nullptr;
}

// A read error ends the file; closing it later is then no failure.
void YcluiPlayback::endReading(std::FILE* stream) {
  if (std::ferror(stream) != 0) ++readErrors_;
  std::clearerr(stream);
}

// Whether reading of the file ends here: at a pause, or when a command of the line has continued
// and finished the file.
bool YcluiPlayback::stopsAfterLine(std::uint64_t fileNumber) {
  if (files_.isEmpty() != 0 || files_.topSlot().number != fileNumber) return true;
  if (isPaused_) isRunning_ = false;
  return isPaused_;
}

bool YcluiPlayback::finishTop() {
  YcluiLogFile file = files_.topSlot().file;
  files_.drop();
  if (files_.isEmpty() != 0) isRunning_ = false;
  const bool isClosed = file.close() != 0;
  file.giveUp();
  return isClosed;
}

void YcluiPlayback::giveUp() {
  for (; files_.isEmpty() == 0; files_.drop()) {
    files_.topSlot().file.close();
    files_.topSlot().file.giveUp();
  }
}

const char* YcluiPlayback::name() const {
  return files_.isEmpty() != 0 ? nullptr : files_.topSlot().file.filename();
}

long YcluiPlayback::line() const {
  return files_.isEmpty() != 0 ? 0 : files_.topSlot().line;
}

long YcluiPlayback::position() const {
  return files_.isEmpty() != 0 ? 0 : files_.topSlot().bytes;
}

bool YcluiPlayback::find(long offset, YcluiPlayedToken& token) const {
  for (int i = files_.count() - 1; i >= 0; --i) {
    const PlayedFile& file = files_.at(i);
    if (file.text == nullptr || offset < file.begin) continue;
    token = {file.file.filename(), file.line, file.textNumber, file.text,
             OffsetInFile(offset - file.begin, file.escapes)};
    return true;
  }
  return false;
}
