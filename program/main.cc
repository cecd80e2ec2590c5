// clui: reads command lines in a language that a script sets up.

#include <fcntl.h>
#include <unistd.h>

#include <clocale>

#include "foundation/YEncoding.h"
#include "program/CluiOptions.h"
#include "program/CluiRun.h"
#include "program/CluiShow.h"
#include "program/CluiTranscriptTest.h"

namespace {

// Opens /dev/null for each standard stream that the caller has closed, so that no file that is
// opened later gets its descriptor.
void OpenStandardStreams() {
  int file = 0;
  while (file >= 0 && file <= 2) file = open("/dev/null", O_RDWR);
  if (file > 2) close(file);
}

}  // namespace

int main(int argc, char** argv) {
  OpenStandardStreams();
  std::setlocale(LC_ALL, "");
  CluiOptions options;
  switch (CluiReadOptions(argc, argv, options)) {
    case CluiStart::Done:
      return CluiRun::AllAccepted;
    case CluiStart::BadUsage:
      return CluiRun::Unable;
    case CluiStart::Run:
      break;
  }
  YEncoding::SetInside(options.inside);
  switch (options.task) {
    case CluiTask::Test:
      return CluiTestTranscripts(options);
    case CluiTask::Show:
      return CluiShow(options);
    default:
      return CluiRun(options).run();
  }
}
