#include "program/CluiOptions.h"

#include <getopt.h>
#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "foundation/YcluiVersion.h"

namespace {

constexpr char Help[] =
    R"(Usage: clui [OPTION]... LANGUAGE.scm [FILE]...
       clui --show [--encoding NAME] [--inside NAME] RECORDING...
       clui --lint LANGUAGE.scm
       clui --diagram LANGUAGE.scm [WORD]...
       clui --dot LANGUAGE.scm
       clui --manual LANGUAGE.scm
       clui --lsp LANGUAGE.scm
       clui --test [--update] LANGUAGE.scm TRANSCRIPT...
Reads command lines in the language that the script LANGUAGE.scm sets up, from
each FILE in order (standard input when there is none, or for -). In a terminal
without a FILE, lines are typed with editing, completion and a history.

  -e TEXT            read TEXT as a line, before any FILE; may be repeated.
                     Standard input is then read only if - is given
      --encoding NAME
                     encoding of files, standard input and messages; any
                     superset of ASCII that iconv knows (default: UTF-8)
      --inside NAME  encoding of text inside, and so of recordings: utf-8
                     (default) or cp932, which has only the characters of
                     Shift_JIS and reads recordings made with it
      --log FILE     record to FILE every word that is read (overwrites it)
      --append       with --log: append to FILE instead
      --nest STYLE   how to record words of a playback: plain, as if typed
                     (default); comment, in comments; silent, not at all
      --dry-run      run no command: report what would be refused, and warn of
                     values outside the ranges and lists that the language gives
      --play         play each FILE back as a recording
      --show         print recordings, converted to the encoding
      --lint         examine LANGUAGE.scm, which is loaded, and print what is
                     wrong with its words, its syntax and its code
      --diagram      print railroad diagrams as SVG, of the commands that begin
                     with or contain a WORD, or of all. With this and the next
                     two options each TEXT of -e is read before, and no file
      --dot          print the graph of the syntax, for Graphviz
      --manual       print a manual of the language as a page of HTML. Commands
                     of a syntax that a TEXT of -e sets get a chapter
      --lsp          serve an editor on standard input and output, with the
                     Language Server Protocol
      --test         each FILE is a transcript, lines after a prompt "> " and
                     below each what it prints: print the differences
      --update       with --test: write the transcripts anew instead
  -q, --quiet        no progress, no summary and no greeting
      --every        report every refused word; by default the first of a line
                     and the number of the others
      --trace        print every token and whether it is accepted or why not,
                     every echo and the text of every command; includes --every
      --library FILE use FILE instead of the installed command library
      --help         print this help and exit
      --version      print the version and exit

Exit status: 0 every word was accepted; 1 a word was refused, a command failed,
the input ended inside a command, --lint found something or a transcript
differs; 2 an error such as bad usage or a file that cannot be read; 130
interrupted.
)";

enum LongOnly {
  OptHelp = 256,
  OptVersion,
  OptEncoding,
  OptInside,
  OptEvery,
  OptTrace,
  OptLibrary,
  OptLog,
  OptAppend,
  OptNest,
  OptPlay,
  OptDryRun,
  OptShow,
  OptLint,
  OptDiagram,
  OptDot,
  OptManual,
  OptLsp,
  OptTest,
  OptUpdate
};

constexpr option LongOptions[] = {
    {"help", no_argument, nullptr, OptHelp},
    {"version", no_argument, nullptr, OptVersion},
    {"encoding", required_argument, nullptr, OptEncoding},
    {"inside", required_argument, nullptr, OptInside},
    {"log", required_argument, nullptr, OptLog},
    {"append", no_argument, nullptr, OptAppend},
    {"nest", required_argument, nullptr, OptNest},
    {"dry-run", no_argument, nullptr, OptDryRun},
    {"play", no_argument, nullptr, OptPlay},
    {"show", no_argument, nullptr, OptShow},
    {"lint", no_argument, nullptr, OptLint},
    {"diagram", no_argument, nullptr, OptDiagram},
    {"dot", no_argument, nullptr, OptDot},
    {"manual", no_argument, nullptr, OptManual},
    {"lsp", no_argument, nullptr, OptLsp},
    {"test", no_argument, nullptr, OptTest},
    {"update", no_argument, nullptr, OptUpdate},
    {"quiet", no_argument, nullptr, 'q'},
    {"every", no_argument, nullptr, OptEvery},
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

bool ReadNestStyle(const char* name, YcluiLogNestStyle& style) {
  const struct {
    const char* name;
    YcluiLogNestStyle style;
  } styles[] = {{"plain", YcluiLogNestPlain},
                {"comment", YcluiLogNestComment},
                {"silent", YcluiLogNestSilent}};
  for (const auto& entry : styles) {
    if (std::strcmp(entry.name, name) != 0) continue;
    style = entry.style;
    return true;
  }
  std::fprintf(stderr, "clui: --nest: expected plain, comment or silent, found \"%s\"\n", name);
  return false;
}

bool ReadInside(const char* name, YEncoding::Kind& kind) {
  const bool isShiftJis = strcasecmp(name, "cp932") == 0;
  kind = isShiftJis ? YEncoding::ShiftJis : YEncoding::Utf8;
  if (isShiftJis || strcasecmp(name, "utf-8") == 0) return true;
  std::fprintf(stderr, "clui: --inside: expected utf-8 or cp932, found \"%s\"\n", name);
  return false;
}

// What goes with a task.
struct TaskRule {
  CluiTask task;
  const char* option;
  const char* needed;  // what the arguments are of which there is at least one, or null
  bool readsFiles;
  bool readsTexts;
  bool records;
};

constexpr TaskRule TaskRules[] = {
    {CluiTask::Run, "", nullptr, true, true, true},
    {CluiTask::DryRun, "--dry-run", nullptr, true, true, false},
    {CluiTask::Play, "--play", "FILE", true, true, true},
    {CluiTask::Show, "--show", "FILE", true, false, false},
    {CluiTask::Lint, "--lint", nullptr, false, false, false},
    {CluiTask::Diagram, "--diagram", nullptr, false, true, false},
    {CluiTask::Graph, "--dot", nullptr, false, true, false},
    {CluiTask::Manual, "--manual", nullptr, false, true, false},
    {CluiTask::Serve, "--lsp", nullptr, false, false, false},
    {CluiTask::Test, "--test", "TRANSCRIPT", true, false, false},
};

const TaskRule& RuleOf(CluiTask task) {
  return *std::find_if(std::begin(TaskRules), std::end(TaskRules),
                       [task](const TaskRule& rule) { return rule.task == task; });
}

CluiStart Conflict(const char* option, const char* other) {
  std::fprintf(stderr, "clui: %s does not go with %s\n", option, other);
  return BadUsage();
}

// An option that names a task. There is one task in a run.
CluiStart Choose(CluiTask task, CluiOptions& options) {
  if (options.task != CluiTask::Run && options.task != task) {
    return Conflict(RuleOf(options.task).option, RuleOf(task).option);
  }
  options.task = task;
  return CluiStart::Run;
}

// Checks all that does not go together, when everything has been read.
CluiStart Check(const CluiOptions& options) {
  const TaskRule& rule = RuleOf(options.task);
  if (!options.texts.empty() && !rule.readsTexts) return Conflict(rule.option, "-e");
  if (!options.log.empty() && !rule.records) return Conflict(rule.option, "--log");
  if (options.append && options.log.empty()) {
    std::fputs("clui: --append needs --log\n", stderr);
    return BadUsage();
  }
  if (!options.files.empty() && !rule.readsFiles) {
    std::fprintf(stderr, "clui: %s reads no file, found \"%s\"\n", rule.option,
                 options.files.front().c_str());
    return BadUsage();
  }
  if (options.files.empty() && rule.needed != nullptr) {
    std::fprintf(stderr, "clui: %s needs a %s\n", rule.option, rule.needed);
    return BadUsage();
  }
  return CluiStart::Run;
}

// Reads the arguments after the options.
CluiStart ReadNames(char** names, char** end, CluiOptions& options) {
  if (options.task != CluiTask::Show) {
    if (names == end) {
      std::fputs("clui: missing LANGUAGE.scm\n", stderr);
      return BadUsage();
    }
    options.language = *names++;
  }
  (options.task == CluiTask::Diagram ? options.words : options.files).assign(names, end);
  if (const CluiStart start = Check(options); start != CluiStart::Run) return start;
  const bool readsInput = (options.task == CluiTask::Run || options.task == CluiTask::DryRun) &&
                          options.files.empty() && options.texts.empty();
  options.typed = readsInput && options.task == CluiTask::Run && isatty(STDIN_FILENO) != 0 &&
                  isatty(STDOUT_FILENO) != 0;
  if (readsInput && !options.typed) options.files.emplace_back("-");
  return CluiStart::Run;
}

// The task that an option names. False for an option that names none.
bool TaskOf(int letter, CluiTask& task) {
  const struct {
    int letter;
    CluiTask task;
  } tasks[] = {{OptPlay, CluiTask::Play},       {OptDryRun, CluiTask::DryRun},
               {OptShow, CluiTask::Show},       {OptLint, CluiTask::Lint},
               {OptDiagram, CluiTask::Diagram}, {OptDot, CluiTask::Graph},
               {OptManual, CluiTask::Manual},   {OptLsp, CluiTask::Serve},
               {OptTest, CluiTask::Test},       {OptUpdate, CluiTask::Test}};
  for (const auto& entry : tasks) {
    if (entry.letter != letter) continue;
    task = entry.task;
    return true;
  }
  return false;
}

}  // namespace

CluiStart CluiReadOptions(int argc, char** argv, CluiOptions& options) {
  int letter = 0;
  while ((letter = getopt_long(argc, argv, "e:q", LongOptions, nullptr)) != -1) {
    CluiTask task = CluiTask::Run;
    if (TaskOf(letter, task)) {
      const CluiStart start = Choose(task, options);
      if (start != CluiStart::Run) return start;
      options.update = options.update || letter == OptUpdate;
      continue;
    }
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
      case OptInside:
        if (!ReadInside(optarg, options.inside)) return BadUsage();
        break;
      case OptEvery:
        options.every = true;
        break;
      case OptTrace:
        options.trace = options.every = true;
        break;
      case OptLibrary:
        options.library = optarg;
        break;
      case OptLog:
        options.log = optarg;
        break;
      case OptAppend:
        options.append = true;
        break;
      case OptNest:
        if (!ReadNestStyle(optarg, options.nest)) return BadUsage();
        break;
      case OptHelp:
        return Print(Help);
      case OptVersion:
        return Print("clui " YQRTCLUI_VERSION "\n");
      default:
        return BadUsage();
    }
  }
  return ReadNames(argv + optind, argv + argc, options);
}
