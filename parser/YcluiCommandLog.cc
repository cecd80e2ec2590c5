#include "parser/YcluiCommandLog.h"

#include <cstdio>

#include "foundation/YEncoding.h"
#include "foundation/YErr.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiLogEncoding.h"

namespace {

constexpr char OpeningLines[] =
    "#\n"
    "%s\n"
    "#\n";
constexpr char Utf8Lines[] =
    "%s\n"
    "#\n";
constexpr char ClosingLines[] =
    "\n"
    "#\n"
    "# stop logging\n"
    "#\n";

}  // namespace

bool YcluiCommandLog::start(YcluiLogFile file, bool isAppended) {
  if (isOpen()) return cluiWarning(YErrLogIsOpen);
  if (isAppended && !YcluiLogEncoding::Fits(file)) return cluiWarning(YErrOtherEncoding);
  if (file.open(isAppended ? "a" : "w") == 0) return cluiWarning(YErrNotOpened);
  file_ = file;
  std::fprintf(file_, OpeningLines, YcluiLogEncoding::Opening.data());
  if (!YEncoding::IsDoubleByte()) std::fprintf(file_, Utf8Lines, YcluiLogEncoding::Mark.data());
  std::fflush(file_);
  return true;
}

bool YcluiCommandLog::shut() {
  if (!isOpen()) return false;
  std::fputs(ClosingLines, file_);
  return file_.close() != 0;
}

void YcluiCommandLog::giveUp() {
  shut();
  file_.giveUp();
}

bool YcluiCommandLog::write(const char* text, bool isPlayed) {
  if (!isOpen()) return false;
  put(text, isPlayed);
  std::fflush(file_);
  return true;
}

void YcluiCommandLog::putToken(const YcluiToken& token, bool isPlayed) {
  put(token.wholeString(), isPlayed);
  put(" ", isPlayed);
  std::fflush(file_);
}

void YcluiCommandLog::put(const char* text, bool isPlayed) {
  if (!isPlayed || nestStyle_ != YcluiLogNestSilent) {
    const bool isComment = isPlayed && nestStyle_ == YcluiLogNestComment;
    if (isComment && file_.lineLength() == 0) std::fputs("# ", file_);
    if (text == nullptr) text = "";
    file_.putString(text);
    std::fputs(text, file_);
  }
  if (file_.lineLength() > YcluiLongestLogLine) {
    std::fputs("\n", file_);
    file_.putString(nullptr);
  }
}
