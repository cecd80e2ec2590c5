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

// Holds the files that are being played, innermost on top, and how far each is read. The receiver
// of a line may start another playback, pause, and continue; so it may finish files that an outer
// loop is reading.
class YcluiPlayback {
 public:
  // The receiver of the lines.
  class Input {
   public:
    virtual void interpretPlayed(const char* text) = 0;
    // The offset of the first byte of a text that would be passed now.
    virtual long nextOffset() const = 0;

   protected:
    ~Input() = default;
  };

  explicit YcluiPlayback(Input& input) : input_(input) {}
  YcluiPlayback(const YcluiPlayback&) = delete;
  YcluiPlayback& operator=(const YcluiPlayback&) = delete;

  // Plays the file to its end or to a pause. Returns false with YErrFileIsPlayed or YErrNotOpened
  // or YErrOtherEncoding as YErrWarning, with YErrTooDeep as YErrError, and with YErrNotClosed when
  // the file was played and cannot be closed.
  bool play(YcluiLogFile file);
  void pause() { isPaused_ = true; }
  // Continues the paused files, innermost first. Returns false when nothing was paused, with
  // YErrTooDeep, and with YErrNotClosed when a file cannot be closed; outer files then wait.
  bool resume();
  // Closes all files without reading further.
  void giveUp();

  // Whether lines are being read: not while paused.
  bool isRunning() const { return isRunning_; }
  // Whether this file is the one that lines are being read from.
  bool reads(const YcluiLogFile& file) const {
    return isRunning_ && files_.isEmpty() == 0 && file == files_.topSlot().file;
  }
  // Number of files that ended by a read error.
  int readErrors() const { return readErrors_; }

  // Of the innermost file, running or paused: its full name, the number of the line in which the
  // last text began, from 1, and the number of bytes read. Null and 0 when there is none.
  const char* name() const;
  long line() const;
  long position() const;
  // Describes the token at an offset of a text that is being interpreted. Returns false, and leaves
  // `token` unchanged, when no text contains that offset.
  bool find(long offset, YcluiPlayedToken& token) const;

 private:
  using Escapes = YcluiLogReader::Escapes;
  struct PlayedFile {
    YcluiLogFile file;
    std::uint64_t number = 0;  // among all files that were played
    long line = 0;             // number of the line in which the last text began
    long ends = 0;             // number of ends of lines read
    long bytes = 0;            // number of bytes read

    // The text that is being interpreted.
    std::uint64_t textNumber = 0;      // among all texts that were played
    const char* text = nullptr;        // as it is in the file; null between two texts
    const Escapes* escapes = nullptr;  // added for the lexer; null when there are none
    long begin = 0;                    // offset of the text
  };

  Input& input_;
  YStack<PlayedFile> files_;
  bool isRunning_ = false;
  bool isPaused_ = false;
  int depth_ = 0;  // number of running calls of play and resume
  std::uint64_t filesPlayed_ = 0;
  std::uint64_t textsPlayed_ = 0;
  int readErrors_ = 0;

  bool isPlayed(const YcluiLogFile& file) const;
  bool playTop();
  bool resumeTop();
  void playText(const char* text, const char* inFile, const Escapes* escapes);
  void endReading(std::FILE* stream);
  bool stopsAfterLine(std::uint64_t fileNumber);
  bool finishTop();
};

#endif  // PARSER_YCLUIPLAYBACK_H_
