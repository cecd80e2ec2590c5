// clui: reads command lines in a language that a script sets up.

#include <clocale>

#include "host/CluiOptions.h"
#include "host/CluiRun.h"

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  CluiOptions options;
  switch (CluiReadOptions(argc, argv, options)) {
    case CluiStart::Done:
      return CluiRun::AllTaken;
    case CluiStart::BadUsage:
      return CluiRun::Unable;
    case CluiStart::Run:
      break;
  }
  return CluiRun(options).run();
}
