// Playback: the lines of log files go through interpret.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "foundation/YErr.h"
#include "foundation/YKanji.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiParserScopes.h"

namespace {

using Escapes = std::vector<long, YAllocator<long>>;

// Reads the lines of a file that is played from its beginning: how a log was written is undone
// here, so that its strings come out of the lexer as they went in.
class LineReader {
 public:
  explicit LineReader(std::FILE* stream) : stream_(stream) {}

  // All that was read so far.
  long bytes() const { return bytes_; }
  long ends() const { return ends_; }

  // Reads up to an end of line outside double quotes, which is not stored. 1 when another line may
  // follow, 0 at the end of the file.
  YWord read() {
    line_.truncate(0);
    inFile_.truncate(0);
    escapes_.clear();
    for (int byte = get(); byte != EOF; byte = get()) {
      if (byte == '\n' && !inString_) return end(1);
      if (byte == '"') inString_ = !inString_;
      add(byte);
      if (byte == '\\') readEscaped();
      if (byte >= 0x80) readTrail(byte);
    }
    return end(0);
  }

  // What was read last: the text for the lexer, the text of the file, and the offsets in the former
  // at which two backslashes were added.
  const char* line() const { return line_.buffer; }
  const char* inFile() const { return inFile_.buffer; }
  const Escapes& escapes() const { return escapes_; }

 private:
  std::FILE* stream_;
  YString line_;
  YString inFile_;
  Escapes escapes_;
  char run_[256];  // bytes that are still to be added to both
  std::size_t runLength_ = 0;
  bool inString_ = false;
  long bytes_ = 0;
  long ends_ = 0;

  int get() {
    const int byte = getc_unlocked(stream_);
    if (byte != EOF) ++bytes_;
    if (byte == '\n') ++ends_;
    return byte;
  }
  void unget(int byte) {
    std::ungetc(byte, stream_);
    --bytes_;
    if (byte == '\n') --ends_;
  }
  void add(int byte) {
    if (runLength_ == sizeof run_) addRun();
    run_[runLength_++] = static_cast<char>(byte);
  }
  void addRun() {
    line_.concat(run_, runLength_);
    inFile_.concat(run_, runLength_);
    runLength_ = 0;
  }
  YWord end(YWord follows) {
    addRun();
    return follows;
  }

  // A log holds strings with nothing escaped, while the lexer takes a backslash for the one and the
  // byte behind it: a quote or a backslash behind a backslash gets two more.
  void readEscaped() {
    const int byte = get();
    if (byte == EOF) return;
    if (byte == '"' || byte == '\\') {
      addRun();
      escapes_.push_back(static_cast<long>(line_.length));
      line_ << "\\\\";
    }
    add(byte);
  }

  // Takes the second byte of a character, whatever it looks like.
  void readTrail(int lead) {
    const int byte = get();
    if (byte == EOF) return;
    const char pair[] = {static_cast<char>(lead), static_cast<char>(byte), '\0'};
    if (IsKanjiStart(pair) != 0) {
      add(byte);
    } else {
      unget(byte);
    }
  }
};

// The offset in the text of the file, given that in the text that was played.
long OffsetInFile(long offset, const Escapes* escapes) {
  if (escapes == nullptr) return offset;
  const auto added = std::lower_bound(escapes->begin(), escapes->end(), offset) - escapes->begin();
  return offset - 2 * static_cast<long>(added);
}

}  // namespace

YWord YcluiParser::playbackFromLog(const char* path) {
  const Running scope(*this);
  YcluiLogFile file(path);
  if (logFile.isOpenning() != 0 && logFile == file) return cluiWarning(YErrFileIsLogged);
  for (int i = 0; i < playbackFiles.count(); ++i) {
    if (playbackFiles.at(i) == file) return cluiWarning(YErrFileIsPlayed);
  }
  if (playbackDepth >= YcluiMostNestedPlaybacks) return cluiError(YErrTooDeep);
  if (file.open("r") == 0) return cluiWarning(YErrNotOpened);
  const Depth depth(playbackDepth);
  playbackFiles.push(file);
  PlaybackPlace place;
  place.serial = ++filesPlayed;
  playbackPlaces.push(place);
  return playFile();
}

YWord YcluiParser::continuePlayback() {
  if (playbackPaused == 0) return 0;
  const Running scope(*this);
  if (playbackDepth >= YcluiMostNestedPlaybacks) return cluiError(YErrTooDeep);
  const Depth depth(playbackDepth);
  playbackPaused = 0;
  return reentryPlayback(playbackFiles.count());
}

// Finishes so many files, from the innermost out. A line of one may itself go on with the others.
YWord YcluiParser::reentryPlayback(int levels) {
  for (; levels > 0 && playbackFiles.isEmpty() == 0; --levels) {
    if (playbackPaused != 0) return 1;
    if (resumeFile() == 0) return 0;
  }
  return 1;
}

// Plays the top file from its beginning.
YWord YcluiParser::playFile() {
  playbackRun = 1;
  const std::uint64_t serial = playbackPlaces.topSlot().serial;
  LineReader reader(playbackFiles.topSlot());
  for (YWord follows = 1; follows != 0;) {
    PlaybackPlace& place = playbackPlaces.topSlot();
    place.line = reader.ends() + 1;
    follows = reader.read();
    place.ends = reader.ends();
    place.bytes = reader.bytes();
    if (follows == 0) endReading(playbackFiles.topSlot());
    playText(reader.line(), reader.inFile(), &reader.escapes());
    if (stopsBehindLine(serial) != 0) return 1;
  }
  return finishFile();
}

// Plays what is left of the top file, in pieces.
YWord YcluiParser::resumeFile() {
  playbackRun = 1;
  const std::uint64_t serial = playbackPlaces.topSlot().serial;
  std::FILE* stream = playbackFiles.topSlot();
  char piece[YcluiLongestPiece + 1];
  while (std::fgets(piece, sizeof piece, stream) != nullptr) {
    PlaybackPlace& place = playbackPlaces.topSlot();
    const std::size_t length = std::strlen(piece);
    place.line = place.ends + 1;
    place.bytes += static_cast<long>(length);
    if (length > 0 && piece[length - 1] == '\n') ++place.ends;
    if (piece[0] != '\n') playText(piece, piece, nullptr);
    if (stopsBehindLine(serial) != 0) return 1;
  }
  endReading(stream);
  return finishFile();
}

void YcluiParser::playText(const char* text, const char* inFile, const Escapes* escapes) {
  const int level = playbackPlaces.count() - 1;
  const std::uint64_t number = ++textsPlayed;
  PlaybackPlace& place = playbackPlaces.topSlot();
  place.number = number;
  place.text = inFile;
  place.escapes = escapes;
  place.begin = interpretDepth == 0 ? 0 : textBase + textLength;
  interpret(text);
  // A command may have finished the file, and begun another in its place.
  const bool isThere = level < playbackPlaces.count() && playbackPlaces.at(level).number == number;
  if (isThere) playbackPlaces.at(level).text = nullptr;
}

// A read error is an end, and no failure of a later close.
void YcluiParser::endReading(std::FILE* stream) {
  if (std::ferror(stream) != 0) ++readErrors;
  std::clearerr(stream);
}

// Whether the file is not to be read further: for a pause, or because a command of the line has
// gone on with it and finished it.
YWord YcluiParser::stopsBehindLine(std::uint64_t serial) {
  if (playbackPlaces.isEmpty() != 0 || playbackPlaces.topSlot().serial != serial) return 1;
  if (playbackPaused == 0) return 0;
  playbackRun = 0;
  return 1;
}

YWord YcluiParser::finishFile() {
  YcluiLogFile file = playbackFiles.topSlot();
  playbackFiles.drop();
  playbackPlaces.drop();
  if (playbackFiles.isEmpty() != 0) playbackRun = 0;
  const YWord closed = file.close();
  file.giveUp();
  return closed;
}

const char* YcluiParser::playbackName() const {
  return playbackFiles.isEmpty() != 0 ? nullptr : playbackFiles.topSlot().filename();
}

long YcluiParser::playbackLine() const {
  return playbackPlaces.isEmpty() != 0 ? 0 : playbackPlaces.topSlot().line;
}

long YcluiParser::playbackPosition() const {
  return playbackPlaces.isEmpty() != 0 ? 0 : playbackPlaces.topSlot().bytes;
}

YWord YcluiParser::playedToken(YcluiPlayedToken& token) const {
  return playedToken(token, static_cast<int>(tokenOffset));
}

YWord YcluiParser::playedToken(YcluiPlayedToken& token, int offset) const {
  for (int i = playbackPlaces.count() - 1; i >= 0; --i) {
    const PlaybackPlace& place = playbackPlaces.at(i);
    if (place.text == nullptr || offset < place.begin) continue;
    token = {playbackFiles.at(i).filename(), place.line, place.number, place.text,
             OffsetInFile(offset - place.begin, place.escapes)};
    return 1;
  }
  return 0;
}

void YcluiParser::closeAllPlayback() {
  for (; playbackFiles.isEmpty() == 0; playbackFiles.drop()) {
    playbackFiles.topSlot().close();
    playbackFiles.topSlot().giveUp();
  }
}
