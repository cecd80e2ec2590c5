#include "host/CluiOptions.h"

#include <getopt.h>

#include <cstdio>

namespace {

constexpr char Help[] =
    R"(Usage: clui [OPTION]... LANGUAGE.scm [FILE]...
Reads command lines in the language that the script LANGUAGE.scm sets up, from
each FILE in order (standard input when there is none, or for -).

  -e TEXT            read TEXT as a line of its own, before any FILE; may be
                     given more than once, and standard input is then read only
                     when it is named
      --encoding NAME
                     the encoding of files, standard input and messages
                     (UTF-8 unless told); any ASCII superset that iconv knows
  -q, --quiet        no progress and no summary
      --trace        tell every token with its answer, every echo and every
                     command text
      --library FILE open FILE in place of the installed command library
      --help         print this and exit
      --version      print the version and exit

Status: 0 every word was taken; 1 a word was refused, a command failed or the
input ended inside a command; 2 the program could not do its work; 130 it was
interrupted.
)";

enum LongOnly { OptHelp = 256, OptVersion, OptEncoding, OptTrace, OptLibrary };

constexpr option LongOptions[] = {
    {"help", no_argument, nullptr, OptHelp},
    {"version", no_argument, nullptr, OptVersion},
    {"encoding", required_argument, nullptr, OptEncoding},
    {"quiet", no_argument, nullptr, 'q'},
    {"trace", no_argument, nullptr, OptTrace},
    {"library", required_argument, nullptr, OptLibrary},
    {nullptr, 0, nullptr, 0},
};

CluiStart BadUsage() {
  std::fputs("Try 'clui --help'.\n", stderr);
  return CluiStart::BadUsage;
}

CluiStart Print(const char* text) {
  std::fputs(text, stdout);
  return CluiStart::Done;
}

}  // namespace

CluiStart CluiReadOptions(int argc, char** argv, CluiOptions& options) {
  int letter = 0;
  while ((letter = getopt_long(argc, argv, "e:q", LongOptions, nullptr)) != -1) {
    switch (letter) {
      case 'e':
        options.texts.emplace_back(optarg);
        break;
      case 'q':
        options.quiet = true;
        break;
      case OptEncoding:
        options.encoding = optarg;
        break;
      case OptTrace:
        options.trace = true;
        break;
      case OptLibrary:
        options.library = optarg;
        break;
      case OptHelp:
        return Print(Help);
      case OptVersion:
        return Print("clui " CLUI_VERSION "\n");
      default:
        return BadUsage();
    }
  }
  if (optind >= argc) {
    std::fputs("clui: no LANGUAGE.scm is given\n", stderr);
    return BadUsage();
  }
  options.language = argv[optind];
  options.files.assign(argv + optind + 1, argv + argc);
  if (options.files.empty() && options.texts.empty()) options.files.emplace_back("-");
  return CluiStart::Run;
}
