// The lines of a log that is played.

#ifndef PARSER_YCLUILOGREADER_H_
#define PARSER_YCLUILOGREADER_H_

#include <cstddef>
#include <cstdio>
#include <vector>

#include "foundation/YMemory.h"
#include "foundation/YString.h"

// Reads a file from its beginning, line by line, and reverses how a log was written, so that its
// strings come out of the lexer as they went in.
class YcluiLogReader {
 public:
  using Escapes = std::vector<long, YAllocator<long>>;

  // The stream stays the caller's.
  explicit YcluiLogReader(std::FILE* stream) : stream_(stream) {}

  // All that was read so far.
  long bytes() const { return bytes_; }
  long ends() const { return ends_; }

  // Reads up to an end of line outside double quotes, which is not stored. False at the end of the
  // file, where what was read is the last line.
  bool read();

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

  int get();
  void unget(int byte);
  void add(int byte);
  void addRun();
  bool endLine(bool follows);
  void readEscaped();
  void readTrail(int lead);
};

#endif  // PARSER_YCLUILOGREADER_H_
