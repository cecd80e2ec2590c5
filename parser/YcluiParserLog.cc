// The command log.

#include <cstdio>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiParserScopes.h"

namespace {

constexpr char OpeningLines[] =
    "#\n"
    "# This command log file was written by Orven KV-7300 system.\n"
    "#\n";
constexpr char ClosingLines[] =
    "\n"
    "#\n"
    "# stop logging\n"
    "#\n";

}  // namespace

YWord YcluiParser::startLogging(const char* path, YWord append) {
  const Running scope(*this);
  YcluiLogFile file(path);
  if (playbackRun != 0 && playbackFiles.isEmpty() == 0 && file == playbackFiles.topSlot()) {
    return cluiWarning(YErrFileIsPlayed);
  }
  if (logFile.isOpenning() != 0) return cluiWarning(YErrLogIsOpen);
  if (file.open(append != 0 ? "a" : "w") == 0) return cluiWarning(YErrNotOpened);
  logFile = file;
  std::fputs(OpeningLines, logFile);
  std::fflush(logFile);
  return 1;
}

YWord YcluiParser::shutLogging() {
  if (logFile.isOpenning() == 0) return 0;
  const Running scope(*this);
  std::fputs(ClosingLines, logFile);
  return logFile.close();
}

YWord YcluiParser::writeToLog(const char* text) {
  if (logFile.isOpenning() == 0) return 0;
  putIntoLog(text);
  std::fflush(logFile);
  return 1;
}

// The word and its blank go to the file together: it ends behind a token at any moment, and costs
// one write for each.
void YcluiParser::logToken(const YcluiToken& token) {
  if (logFile.isOpenning() == 0) return;
  putIntoLog(token.wholeString());
  putIntoLog(" ");
  std::fflush(logFile);
}

void YcluiParser::putIntoLog(const char* text) {
  if (playbackRun == 0 || logNestStyle != YcluiLogNestSilent) {
    const bool isComment = playbackRun != 0 && logNestStyle == YcluiLogNestComment;
    if (isComment && logFile.lineLength() == 0) std::fputs("# ", logFile);
    if (text == nullptr) text = "";
    logFile.putString(text);
    std::fputs(text, logFile);
  }
  if (logFile.lineLength() > YcluiLongestLogLine) {
    std::fputs("\n", logFile);
    logFile.putString(nullptr);
  }
}

// A log that cannot be written out is closed all the same when its parser goes.
void YcluiParser::closeLog() {
  shutLogging();
  logFile.giveUp();
}
