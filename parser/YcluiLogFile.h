// A file of command text, written as a log or read in a playback.

#ifndef PARSER_YCLUILOGFILE_H_
#define PARSER_YCLUILOGFILE_H_

#include <cstdint>
#include <cstdio>

#include "foundation/YStack.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"

// Holds the stream, the file's name in a form that can be compared, and a count of the bytes
// written. Its user writes and reads through the stream:
//
//   YcluiLogFile file("out/log");
//   if (file.open("w") == 0) return;            // YErrNotOpened has been recorded
//   std::fputs("go\n", file);
//   if (file.close() == 0) file.giveUp();       // not everything was written
//
// Copies share the stream. The destructor leaves it open: only `close` and `giveUp` close it.
class YQRT_API YcluiLogFile {
 public:
  YcluiLogFile() = default;
  // A closed file. Its name is `path`, made absolute from the present working folder, with the
  // links and dots of its folder resolved. The file need not exist.
  explicit YcluiLogFile(const char* path);
  // Shares the stream; `lineLength` of the copy is 0.
  YcluiLogFile(const YcluiLogFile& other) : stream(other.stream), name(other.name) {}
  // Shares the stream and copies `lineLength`.
  YcluiLogFile& operator=(const YcluiLogFile& other) = default;
  ~YcluiLogFile() = default;

  // Opens the file with a mode of fopen, sets `lineLength` to 0 and returns 1. On failure returns 0
  // with YErrNotOpened, as YErrError, and changes nothing. A stream that is still open is replaced
  // without being closed.
  YWord open(const char* mode);

  // Flushes and closes the stream, sets `lineLength` to 0 and returns 1; returns 1 also when none
  // is open. Returns 0 with YErrNotClosed, as YErrError, in two cases: when something could not be
  // written since the file was opened or `close` last failed, the stream stays open and can be used
  // and closed again; when all was written and only fclose fails, the stream is gone.
  YWord close();

  // Closes a stream that `close` has left open. Ignores failures and records nothing.
  void giveUp();

  // Adds the length of a text, in bytes, to `lineLength`; null sets it to 0. Writes nothing.
  void putString(const char* text);
  // The bytes counted by putString. An end of line in a text counts like any other byte.
  int lineLength() const { return lineLength_; }

  // 1 while a stream is open, else 0.
  YWord isOpenning() const { return stream == nullptr ? 0 : 1; }
  // The stream; null while none is open.
  operator std::FILE*() const { return stream; }  // NOLINT(google-explicit-constructor)
  // The name, as the constructor made it. Valid as long as this object is unchanged.
  const char* filename() const { return name.buffer; }

  // Compare the names only.
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
