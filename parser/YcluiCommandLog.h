// The command log. Internal to the parser.

#ifndef PARSER_YCLUICOMMANDLOG_H_
#define PARSER_YCLUICOMMANDLOG_H_

#include "foundation/YTypes.h"
#include "lex/YcluiToken.h"
#include "parser/YcluiLogFile.h"
#include "parser/YcluiLogNestStyle.h"

// Writes the log file of a parser: opening lines, the text of tokens, closing lines. For the text
// of a playback the nest style decides. Each token is flushed, so the file is always complete up to
// the last token.
class YcluiCommandLog {
 public:
  bool isOpen() const { return file_.isOpenning() != 0; }
  // Whether this file is the log.
  bool writes(const YcluiLogFile& file) const { return isOpen() && file_ == file; }
  void setNestStyle(YcluiLogNestStyle style) { nestStyle_ = style; }

  // Opens the log, at the end of the file when `isAppended`, and writes the opening lines. Returns
  // false with YErrLogIsOpen, YErrOtherEncoding or YErrNotOpened, as YErrWarning.
  bool start(YcluiLogFile file, bool isAppended);
  // Writes the closing lines and closes the file. Returns false when no log is open, and with
  // YErrNotClosed when YcluiLogFile::close fails.
  bool shut();
  // Shuts the log, and closes the file even when not everything could be written.
  void giveUp();

  // Adds a text; null adds nothing. Returns false when no log is open. `isPlayed` says whether the
  // text comes from a playback.
  bool write(const char* text, bool isPlayed);
  // Adds a token and a blank, with one flush.
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
