#include "program/CluiPlayer.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>

#include "foundation/YFileName.h"
#include "parser/YcluiLogFile.h"
#include "parser/YcluiParser.h"
#include "program/CluiInterrupt.h"
#include "program/text/CluiMessages.h"

namespace {

// Why a file cannot be read, or the empty text. The library would read a folder as an empty file.
std::string WhyNotReadable(const std::string& file, long long& size) {
  struct stat facts = {};
  if (access(file.c_str(), R_OK) != 0 || stat(file.c_str(), &facts) != 0) {
    return std::strerror(errno);
  }
  if (S_ISDIR(facts.st_mode)) return std::strerror(EISDIR);
  size = S_ISREG(facts.st_mode) ? facts.st_size : 0;
  return std::string();
}

}  // namespace

void CluiPlayer::play(const std::string& file) {
  std::string name;
  if (!begin(file, name)) return;
  const auto begin = std::chrono::steady_clock::now();
  playNamed(name);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  if (!CluiInterrupted()) return feeder_.end(0);
  if (reading_.isAlive()) diagnostics_.playbackStopped(time.count());
}

// Sets `name` to the file's name in the system's encoding. Reports the reason and returns false
// when the file cannot be played.
bool CluiPlayer::begin(const std::string& file, std::string& name) {
  reading_.setInput(file);
  long long size = 0;
  std::string problem = WhyNotReadable(file, size);
  if (problem.empty() && !reading_.isAlive()) {
    problem = "the parser was deleted; the file is not played";
  }
  if (problem.empty() && !YFileName::ToText(file, name)) problem = CluiNoNameText();
  if (!problem.empty()) {
    diagnostics_.inputFailed(0, problem);
    return false;
  }
  reading_.setPlayedFile(YcluiLogFile(name.c_str()).filename());
  reading_.line().restart();
  diagnostics_.beginInput();
  CluiFinishLineOnInterrupt(true);
  progress_.begin(file, size);
  return true;
}

void CluiPlayer::playNamed(const std::string& name) {
  YcluiParser* const parser = reading_.parser();
  const int errors = parser->playbackReadErrors();
  if (parser->playbackFromLog(name.c_str()) == 0) outcome_.unable = true;
  progress_.erase();
  if (reading_.isAlive() && parser->playbackReadErrors() != errors) {
    diagnostics_.inputFailed(0, "the file could not be read to its end");
  }
  diagnostics_.endText();
}

void CluiPlayer::showProgress() {
  if (!reading_.isPlayingInput()) return;
  progress_.show(reading_.parser()->playbackPosition(), reading_.parser()->playbackLine());
}
