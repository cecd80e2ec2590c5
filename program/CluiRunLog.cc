// Recording what is fed, and playing recordings.

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "foundation/YErrCodes.h"
#include "parser/YcluiLogFile.h"
#include "parser/YcluiParser.h"
#include "program/CluiInterrupt.h"
#include "program/CluiLiteral.h"
#include "program/CluiMessages.h"
#include "program/CluiRun.h"

namespace {

// Whether both names lead to one file, by links too.
bool IsSameFile(const std::string& one, const std::string& other) {
  struct stat a = {};
  struct stat b = {};
  if (stat(one.c_str(), &a) != 0 || stat(other.c_str(), &b) != 0) return false;
  return S_ISREG(a.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Why a file cannot be read, or nothing. The library would read a folder as an empty file.
std::string WhyNotReadable(const std::string& name, long long& size) {
  struct stat facts = {};
  if (access(name.c_str(), R_OK) != 0 || stat(name.c_str(), &facts) != 0) {
    return std::strerror(errno);
  }
  if (S_ISDIR(facts.st_mode)) return std::strerror(EISDIR);
  size = S_ISREG(facts.st_mode) ? facts.st_size : 0;
  return std::string();
}

// What of a string a recording cannot give back, or null. A backslash is given back in front of a
// quote or another backslash only, a quote behind a backslash only.
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

bool CluiRun::startLog() {
  if (options_.log.empty()) return true;
  std::vector<std::string> read = options_.files;
  read.push_back(options_.language);
  for (const std::string& file : read) {
    if (!IsSameFile(options_.log, file)) continue;
    tellProblem(options_.log, "it is read in this run and cannot be recorded to");
    return false;
  }
  parser_->nestStyle(options_.nest);
  errno = 0;
  if (parser_->startLogging(options_.log.c_str(), options_.append ? 1 : 0) != 0) return true;
  const std::string reason = std::strerror(errno);
  const bool isOpen = !codes_.empty() && codes_.back().code == YErrLogIsOpen;
  codes_.clear();
  if (isOpen) {
    report_.tell({options_.log, 0, 0}, CluiCodeText(YErrLogIsOpen));
  } else {
    tellProblem(options_.log, reason);
  }
  return false;
}

void CluiRun::endLog() {
  if (options_.log.empty() || !isAlive() || parser_->isLogging() == 0) return;
  tellCodes();
  errno = 0;
  if (parser_->shutLogging() != 0) return;
  const std::string reason = errno == 0 ? "" : std::string(": ") + std::strerror(errno);
  codes_.clear();
  logLost_ = unable_ = true;
  tellProblem(options_.log, "not everything could be recorded" + reason);
}

void CluiRun::playFile(const std::string& name) {
  input_ = name;
  long long size = 0;
  const std::string problem = WhyNotReadable(name, size);
  if (!problem.empty()) return giveUpInput(0, problem);
  if (!isAlive()) return giveUpInput(0, "the parser was deleted; this is not played");
  playedName_ = YcluiLogFile(name.c_str()).filename();
  line_.restart();
  refusal_.restart();
  CluiLetLineFinish(true);
  progress_.begin(name, size);
  const Clock::time_point begin = Clock::now();
  const int errors = parser_->playbackReadErrors();
  if (parser_->playbackFromLog(name.c_str()) == 0) unable_ = true;
  progress_.erase();
  if (isAlive() && parser_->playbackReadErrors() != errors) tellCut();
  if (options_.trace) trace_.settle();
  tellCodes();
  if (CluiInterrupted()) return tellStopped(begin);
  endInput(0);
}

void CluiRun::tellCut() {
  unable_ = true;
  tellProblem(input_, "not all of it could be read");
}

void CluiRun::tellStopped(Clock::time_point begin) {
  if (!isAlive()) return;
  const CluiPlace place =
      parser_->playbackName() == nullptr ? CluiPlace{input_, 0, 0} : playbackPlace();
  const std::chrono::duration<double> time = Clock::now() - begin;
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.1f s", time.count());
  std::string text = "interrupted; " + std::to_string(taken_) + " words taken, ";
  text.append(std::to_string(refused_)).append(" refused, ").append(seconds);
  report_.tell(place, encoding_.fromUtf8(text));
}

// A playback gives its texts to the parser itself: they are not in the line that is fed.
bool CluiRun::isPlayed() const {
  if (parser_ == nullptr || parser_->isPlaybackRun() == 0) return false;
  const long length = static_cast<long>(line_.text().size());
  return line_.number() == 0 || parser_->lastTokenOffset() >= length;
}

CluiPlace CluiRun::playbackPlace() const {
  return {nameOfPlayed(parser_->playbackName()), static_cast<std::size_t>(parser_->playbackLine()),
          0};
}

// The user's name for what the user named.
std::string CluiRun::nameOfPlayed(const std::string& file) const {
  return file == playedName_ ? input_ : file;
}

void CluiRun::showPlayback() {
  const char* name = parser_->playbackName();
  if (line_.number() > 0 || name == nullptr || playedName_ != name) return;
  progress_.show(parser_->playbackPosition(), parser_->playbackLine());
}

// Tells of values that come back as others when the recording is played.
void CluiRun::tellLosses(const YcluiToken& token) {
  if (parser_->isLogging() == 0 || token.id() == YcluiIdAlias) return;
  const bool isSilent = !options_.log.empty() && options_.nest == YcluiLogNestSilent;
  if (isSilent && parser_->isPlaybackRun() != 0) return;
  for (int i = 1; i < token.argc(); ++i) {
    const wchar_t* loss = token[i]->tag == YAttribString ? LossIn(token[i]->GetString()) : nullptr;
    if (loss == nullptr) continue;
    CluiSpot spot = spotNow();
    refusal_.moveToArgument(*parser_, lineOf(spot), token, i, spot);
    tellAt(spot, L"warning: argument " + std::to_wstring(i) + L" of " +
                     CluiQuoted(encoding_.fromSystem(token.string())) + L" holds " + loss +
                     L", which a recording does not give back");
  }
}
