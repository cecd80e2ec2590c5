// One file of command text: written as a log, or read in a playback.

#ifndef PARSER_YCLUILOGFILE_H_
#define PARSER_YCLUILOGFILE_H_

#include <cstdint>
#include <cstdio>

#include "foundation/YStack.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"

// Holds the stream, the file's name in a form that can be compared, and how much has been written.
// The user writes and reads through the stream.
//
// Copies share the stream, and destroying a file leaves it open: only `close` closes.
class YQRT_API YcluiLogFile {
 public:
  YcluiLogFile() = default;
  // Closed, with the name that `path` has when it is made absolute from the working folder of this
  // moment and its folder is resolved. The file need not exist.
  explicit YcluiLogFile(const char* path);
  // Shares the stream; `lineLength` of a new copy is 0.
  YcluiLogFile(const YcluiLogFile& other) : stream(other.stream), name(other.name) {}
  // Copies all, `lineLength` too.
  YcluiLogFile& operator=(const YcluiLogFile& other) = default;
  ~YcluiLogFile() = default;

  // Opens the file with a mode for fopen, and makes `lineLength` 0. 0 and no change on a failure,
  // which records YErrNotOpened as YErrError. A stream that is stored already is not closed.
  YWord open(const char* mode);

  // Writes out what is pending, then closes; 1 also when nothing is open. Both failures record
  // YErrNotClosed as YErrError and return 0. When not everything could be written, now or since the
  // last close that failed, the stream stays stored and can be used and closed again. When all was
  // written and the closing itself fails, no stream is stored any more.
  YWord close();

  // Closes what `close` has left open, and ignores failures. Nothing is recorded.
  void giveUp();

  // Counts the bytes of a text that was written; null makes the count 0. Writes nothing.
  void putString(const char* text);
  // Bytes counted since the file was opened or the count was made 0; an end of line does not
  // count specially.
  int lineLength() const { return lineLength_; }

  YWord isOpenning() const { return stream == nullptr ? 0 : 1; }
  // The stream, null while none is open.
  operator std::FILE*() const { return stream; }  // NOLINT(google-explicit-constructor)
  const char* filename() const { return name.buffer; }

  // Compare the names alone.
  YWord operator==(const YcluiLogFile& other) const { return name == other.name; }
  YWord operator!=(const YcluiLogFile& other) const { return name != other.name; }

 private:
  std::FILE* stream = nullptr;
  YString name;
  std::int32_t lineLength_ = 0;
};

using YcluiLogFile_Array = YArray<YcluiLogFile>;
using YcluiLogFile_Stack = YStack<YcluiLogFile>;

#endif  // PARSER_YCLUILOGFILE_H_
