// The command log.

#ifndef PARSER_YCLUICOMMANDLOG_H_
#define PARSER_YCLUICOMMANDLOG_H_

#include "foundation/YTypes.h"
#include "lex/YcluiToken.h"
#include "parser/YcluiLogFile.h"
#include "parser/YcluiLogNestStyle.h"

// Writes the log file of a parser: opening lines, the text of tokens, closing lines. Text of a
// playback is written as the nest style says. Everything is flushed at once, so that the file is
// complete up to the last token at any moment.
class YcluiCommandLog {
 public:
  bool isOpen() const { return file_.isOpenning() != 0; }
  // Whether this file is the log.
  bool writes(const YcluiLogFile& file) const { return isOpen() && file_ == file; }
  void setNestStyle(YcluiLogNestStyle style) { nestStyle_ = style; }

  // 0 with YErrLogIsOpen or YErrNotOpened, as YErrWarning.
  YWord start(YcluiLogFile file, YWord append);
  // 0 without a log, and what YcluiLogFile::close returns.
  YWord shut();
  // Shuts the log; when it cannot be written out, it is closed all the same.
  void giveUp();

  // Adds a text, null adding none. 0 when no log is open.
  YWord write(const char* text, bool isPlayed);
  // Adds a token and its blank in one write to the file.
  void writeToken(const YcluiToken& token, bool isPlayed) {
    if (isOpen()) putToken(token, isPlayed);
  }

 private:
  YcluiLogFile file_;
  YcluiLogNestStyle nestStyle_ = YcluiLogNestSilent;

  void put(const char* text, bool isPlayed);
  void putToken(const YcluiToken& token, bool isPlayed);
};

#endif  // PARSER_YCLUICOMMANDLOG_H_
