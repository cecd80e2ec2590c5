#include "program/CluiRecorder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "foundation/YErrCodes.h"
#include "foundation/YFileName.h"
#include "parser/YcluiParser.h"
#include "program/CluiLine.h"
#include "program/text/CluiMessages.h"

namespace {

// Whether both names denote the same file, links included.
bool IsSameFile(const std::string& one, const std::string& other) {
  struct stat a = {};
  struct stat b = {};
  if (stat(one.c_str(), &a) != 0 || stat(other.c_str(), &b) != 0) return false;
  return S_ISREG(a.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// The name of something in a string that a playback would change, or null. A playback preserves a
// backslash only before a quote or another backslash, and a quote only after a backslash.
const wchar_t* LossIn(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); i += CluiStepAt(text, i)) {
    const bool escapes = i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\');
    if (text[i] == '\\' && !escapes) return L"a backslash";
    if (text[i] == '\\') ++i;
    if (text[i] == '"' && (i == 0 || text[i - 1] != '\\')) return L"a double quote";
    if (text.compare(i, 2, "${") == 0) return L"\"${\"";
  }
  return nullptr;
}

}  // namespace

bool CluiRecorder::start() {
  if (options_.log.empty()) return true;
  if (isRead()) {
    diagnostics_.problem(options_.log, "cannot record to a file that is read in the same run");
    return false;
  }
  return startLogging(options_.append);
}

void CluiRecorder::resume() {
  if (!options_.log.empty() && !startLogging(true)) outcome_.unable = true;
}

bool CluiRecorder::startLogging(bool append) {
  std::string name;
  if (!YFileName::ToText(options_.log, name)) {
    diagnostics_.problem(options_.log, CluiNoNameText());
    return false;
  }
  reading_.parser()->nestStyle(options_.nest);
  errno = 0;
  if (reading_.parser()->startLogging(name.c_str(), append ? 1 : 0) != 0) return true;
  notStarted(std::strerror(errno));
  return false;
}

bool CluiRecorder::isRead() const {
  if (IsSameFile(options_.log, options_.language)) return true;
  for (const std::string& file : options_.files) {
    if (IsSameFile(options_.log, file)) return true;
  }
  return false;
}

void CluiRecorder::notStarted(const std::string& reason) {
  const unsigned int code = diagnostics_.dropCodes();
  if (code == YErrLogIsOpen || code == YErrOtherEncoding) {
    diagnostics_.problem(options_.log, CluiCodeText(code));
  } else {
    diagnostics_.problem(options_.log, reason);
  }
}

void CluiRecorder::end() {
  const bool isLogging = reading_.isAlive() && reading_.parser()->isLogging() != 0;
  if (options_.log.empty() || !isLogging) return;
  diagnostics_.reportCodes();
  errno = 0;
  if (reading_.parser()->shutLogging() != 0) return;
  const std::string reason = errno == 0 ? "" : std::string(": ") + std::strerror(errno);
  diagnostics_.dropCodes();
  isIncomplete_ = outcome_.unable = true;
  diagnostics_.problem(options_.log, "the recording is incomplete" + reason);
}

void CluiRecorder::warnOfLosses(const YcluiToken& token) {
  const YcluiParser& parser = *reading_.parser();
  if (parser.isLogging() == 0 || token.id() == YcluiIdAlias) return;
  const bool isSilent = !options_.log.empty() && options_.nest == YcluiLogNestSilent;
  if (isSilent && parser.isPlaybackRun() != 0) return;
  for (int i = 1; i < token.argc(); ++i) {
    const wchar_t* loss = token[i]->tag == YAttribString ? LossIn(token[i]->GetString()) : nullptr;
    if (loss == nullptr) continue;
    diagnostics_.warnOfArgument(
        token, i, std::wstring(L" contains ") + loss + L", which a recording does not preserve");
  }
}
