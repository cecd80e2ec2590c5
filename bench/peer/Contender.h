// What is measured side by side: something that knows a language and reads lines in it.

#ifndef BENCH_PEER_CONTENDER_H_
#define BENCH_PEER_CONTENDER_H_

#include <memory>
#include <string>
#include <vector>

#include "bench/peer/Language.h"
#include "bench/peer/TypedLines.h"

// What came of reading lines.
struct Outcome {
  long sum = 0;
  long refused = 0;  // lines that no action has run for

  bool operator==(const Outcome&) const = default;
};

// Its constructor builds the language and its destructor takes it down.
class Contender {
 public:
  Contender() = default;
  Contender(const Contender&) = delete;
  Contender& operator=(const Contender&) = delete;
  virtual ~Contender() = default;

  // The line as it is typed here.
  virtual std::string typed(const Line& line) const = 0;
  virtual Outcome read(const TypedLines& lines) = 0;
  // Makes the list of commands that begin so, and answers how many there are, other commands than
  // those of the language included.
  virtual long complete(const char* prefix) = 0;
  // The same with what can follow a command's word; 0 where nothing is known of it.
  virtual long completeBehind(const std::string& /*word*/) { return 0; }
  // Writes down what is read from now on, or no longer. False where there is nothing of that kind.
  virtual bool log(const char* /*path*/) { return false; }
};

struct ContenderKind {
  const char* name;
  std::unique_ptr<Contender> (*make)(const Language&);  // null when it is not installed
  bool takesShortForms;
  bool completes;
};

// The hand-written loop first, yqrtClui second, then the peers.
const std::vector<ContenderKind>& ContenderKinds();

std::unique_ptr<Contender> MakeHandLoop(const Language& language);
std::unique_ptr<Contender> MakeClui(const Language& language);
std::unique_ptr<Contender> MakeLibcli(const Language& language);
std::unique_ptr<Contender> MakeTcl(const Language& language);

#endif  // BENCH_PEER_CONTENDER_H_
