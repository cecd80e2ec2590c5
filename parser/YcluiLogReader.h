// The lines of a log that is played. Internal to the parser.

#ifndef PARSER_YCLUILOGREADER_H_
#define PARSER_YCLUILOGREADER_H_

#include <cstddef>
#include <cstdio>
#include <vector>

#include "foundation/YEncoding.h"
#include "foundation/YMemory.h"
#include "foundation/YString.h"

// Reads a file from its beginning, line by line, and adds backslashes where the lexer would remove
// some, so that it reads the strings of a log as they were logged.
class YcluiLogReader {
 public:
  using Escapes = std::vector<long, YAllocator<long>>;

  // The caller owns the stream, which must outlive this object.
  explicit YcluiLogReader(std::FILE* stream) : stream_(stream) {}

  // The number of bytes and of ends of lines that were read so far.
  long bytes() const { return bytes_; }
  long ends() const { return ends_; }

  // Reads up to an end of line outside double quotes, which is not stored. Returns false at the end
  // of the file; the last line, possibly empty, has been read then.
  bool read();

  // The last line: the text for the lexer, the text in the file, and the offsets in the former at
  // which two backslashes were added.
  const char* line() const { return line_.buffer; }
  const char* inFile() const { return inFile_.buffer; }
  const Escapes& escapes() const { return escapes_; }

 private:
  std::FILE* stream_;
  YString line_;
  YString inFile_;
  Escapes escapes_;
  char run_[256];  // bytes that are not yet appended to line_ and inFile_
  std::size_t runLength_ = 0;
  bool inString_ = false;
  bool isDoubleByte_ = YEncoding::IsDoubleByte();
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
