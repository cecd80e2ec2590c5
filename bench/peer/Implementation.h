// What is compared: an implementation of the same language.

#ifndef BENCH_PEER_IMPLEMENTATION_H_
#define BENCH_PEER_IMPLEMENTATION_H_

#include <memory>
#include <string>

#include "bench/peer/Language.h"

// What reading lines resulted in.
struct Outcome {
  long sum = 0;
  long refused = 0;  // lines whose action did not run

  bool operator==(const Outcome&) const = default;
};

// The constructor builds the language and the destructor destroys it.
class Implementation {
 public:
  Implementation() = default;
  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;
  virtual ~Implementation() = default;

  // The line as it is typed here.
  virtual std::string typed(const Line& line) const {
    return line.word + (line.isOn ? " on " : " off ") + std::to_string(line.number) + " \"abc\"";
  }
  virtual Outcome read(const TypedLines& lines) = 0;
  // Previews the lines and returns how many would complete a command, where the implementation has
  // previews.
  virtual long preview(const TypedLines& /*lines*/) { return 0; }
  // Makes the list of commands with that prefix and returns their number, which may include
  // commands that are not of the language.
  virtual long complete(const char* /*prefix*/) { return 0; }
  // Makes the list of what may follow a command's word, where the implementation knows it.
  virtual void completeAfter(const std::string& /*word*/) {}
};

std::unique_ptr<Implementation> MakeHandLoop(const Language& language);
std::unique_ptr<Implementation> MakeClui(const Language& language);
// Writes each line to a log.
std::unique_ptr<Implementation> MakeCluiWithLog(const Language& language);
// Declares the language in C++, with functions as commands.
std::unique_ptr<Implementation> MakeCluiLanguage(const Language& language);
std::unique_ptr<Implementation> MakeLibcli(const Language& language);
std::unique_ptr<Implementation> MakeTcl(const Language& language);

#endif  // BENCH_PEER_IMPLEMENTATION_H_
