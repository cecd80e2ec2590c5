// Recognises logs whose text is not in the encoding inside. Internal to the system.

#ifndef PARSER_YCLUILOGENCODING_H_
#define PARSER_YCLUILOGENCODING_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YFileName.h"
#include "foundation/YTypes.h"
#include "parser/YcluiLogFile.h"

// A process whose encoding inside is UTF-8 marks its logs by a comment after the opening lines; a
// log without the mark was written in Shift_JIS. Text in ASCII is the same in both. A file without
// opening lines was written by hand: in a process with UTF-8 it must be UTF-8.
//
//   YcluiLogEncoding log;
//   for (const char byte : line) log.add(byte);
//   if (!log.fits()) ...
class YQRT_API YcluiLogEncoding {
 public:
  // The second of the opening lines, and the mark, which follows the third.
  static constexpr std::string_view Opening =
      "# This command log file was written by Orven KV-7300 system.";
  static constexpr std::string_view Mark = "# encoding: UTF-8";

  // Examines the next byte of the file.
  void add(char byte);
  // Whether the bytes so far, up to the last character, are in the encoding inside.
  bool fits() const { return fits_; }

  // Examines a whole file. True also for one that cannot be read, or that can be read only once,
  // such as a pipe.
  static bool Fits(const YcluiLogFile& file) { return Fits(YFileName::FromText(file.filename())); }
  // The same for a name in bytes of the file system.
  static bool Fits(const std::string& name);

 private:
  enum class Writer { Unknown, ShiftJis, Utf8 };

  Writer writer_ = Writer::Unknown;
  int openingLines_ = 0;  // how many have been read, without the first one, which may follow a text
  char line_[80];         // the beginning of the line
  std::size_t length_ = 0;
  char character_[4];  // of an unknown writer: the bytes of an incomplete character
  std::size_t bytes_ = 0;
  bool fits_ = true;

  void endLine();
  bool fitsInCharacter(char byte);
};

#endif  // PARSER_YCLUILOGENCODING_H_
