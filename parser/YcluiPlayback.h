// Playback: the lines of log files become input.

#ifndef PARSER_YCLUIPLAYBACK_H_
#define PARSER_YCLUIPLAYBACK_H_

#include <cstdint>
#include <cstdio>

#include "foundation/YStack.h"
#include "foundation/YTypes.h"
#include "parser/YcluiLogFile.h"
#include "parser/YcluiLogReader.h"

struct YcluiPlayedToken;

// Keeps the files that are being played, innermost on top, and how far each is read. Whoever
// receives a line may start another playback, pause, continue, and finish files that a loop further
// out is reading.
class YcluiPlayback {
 public:
  // Receives the lines.
  class Input {
   public:
    virtual void interpretPlayed(const char* text) = 0;
    // The offset that the first byte of a text given now has.
    virtual long nextOffset() const = 0;

   protected:
    ~Input() = default;
  };

  explicit YcluiPlayback(Input& input) : input_(input) {}
  YcluiPlayback(const YcluiPlayback&) = delete;
  YcluiPlayback& operator=(const YcluiPlayback&) = delete;

  // Plays the file to its end or to a pause. 0 with YErrFileIsPlayed or YErrNotOpened as
  // YErrWarning, with YErrTooDeep as YErrError, and when the file cannot be closed.
  YWord play(YcluiLogFile file);
  void pause() { isPaused_ = true; }
  // Continues the paused files, innermost first. 0 when nothing was paused or a file could not be
  // closed, and with YErrTooDeep.
  YWord resume();
  // Closes all files without reading further.
  void giveUp();

  // Whether lines are being read: not while paused.
  bool isRunning() const { return isRunning_; }
  // Whether this file is the one that lines are being read from.
  bool reads(const YcluiLogFile& file) const {
    return isRunning_ && files_.isEmpty() == 0 && file == files_.topSlot().file;
  }
  // How many files ended by a read error.
  int readErrors() const { return readErrors_; }

  // Of the innermost file, running or paused: its full name, the line in which the last text began,
  // and how many bytes are read; null and 0 when there is none.
  const char* name() const;
  long line() const;
  long position() const;
  // Describes the token at an offset, when a text that holds it is being interpreted. 0, and
  // `token` unchanged, when none does.
  YWord find(long offset, YcluiPlayedToken& token) const;

 private:
  using Escapes = YcluiLogReader::Escapes;
  struct PlayedFile {
    YcluiLogFile file;
    std::uint64_t number = 0;  // among all files that were played
    long line = 0;             // in which the last text began
    long ends = 0;             // of lines that are read
    long bytes = 0;            // that are read

    // The text that is being interpreted.
    std::uint64_t textNumber = 0;      // among all texts that were played
    const char* text = nullptr;        // as the file has it; null between two
    const Escapes* escapes = nullptr;  // added for the lexer, null when there are none
    long begin = 0;                    // its offset
  };

  Input& input_;
  YStack<PlayedFile> files_;
  bool isRunning_ = false;
  bool isPaused_ = false;
  int depth_ = 0;  // loops that read lines of a file
  std::uint64_t filesPlayed_ = 0;
  std::uint64_t textsPlayed_ = 0;
  int readErrors_ = 0;

  bool isPlayed(const YcluiLogFile& file) const;
  YWord playTop();
  YWord resumeTop();
  void playText(const char* text, const char* inFile, const Escapes* escapes);
  void endReading(std::FILE* stream);
  bool stopsAfterLine(std::uint64_t fileNumber);
  YWord finishTop();
};

#endif  // PARSER_YCLUIPLAYBACK_H_
