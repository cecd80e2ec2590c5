// All implementations over one language, and the tasks that compare them.

#ifndef BENCH_PEER_PEERS_H_
#define BENCH_PEER_PEERS_H_

#include <memory>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "bench/peer/Implementation.h"

struct Kind {
  const char* name;
  std::unique_ptr<Implementation> (*make)(const Language&);
  bool acceptsShortForms;
  bool completes;
};

// Those that are installed: the hand-written loop first, yqrtClui second.
const std::vector<Kind>& Kinds();

// Each operation adds a task for each implementation that has the operation measured. The tasks use
// the object.
class Peers {
 public:
  explicit Peers(int commands);
  Peers(const Peers&) = delete;
  Peers& operator=(const Peers&) = delete;

  // A unit is a line. Lines in short forms have a kind of their own, "NAME, short forms".
  void addReading(std::vector<Task>& tasks, const char* row, Spelling spelling, int lines) const;
  // The same by yqrtClui with a log, of kind "yqrtClui, with a log".
  void addLogging(std::vector<Task>& tasks, const char* row, int lines) const;
  // The same by a language declared in C++, of kind "yqrtClui, in C++".
  void addDeclared(std::vector<Task>& tasks, const char* row, int lines) const;
  // A unit is a line that yqrtClui previews.
  void addPreviewing(std::vector<Task>& tasks, const char* row, int lines) const;
  // A unit is a completion after as many letters of a command's word. With `alternating`, each one
  // follows a completion after a command's word, and a unit is both.
  void addCompleting(std::vector<Task>& tasks, const char* row, std::size_t letters,
                     bool alternating) const;

 private:
  Language language_;
  std::vector<std::unique_ptr<Implementation>> implementations_;  // in the order of Kinds()
  std::unique_ptr<Implementation> withLog_;
  std::unique_ptr<Implementation> declared_;

  Task reading(Implementation& implementation, const char* row, const std::string& kind,
               Spelling spelling, int lines) const;
};

// A task for each kind. A unit is a command of a language that is built and destroyed `times`
// times.
std::vector<Task> BuildingTasks(const Language& language, const char* row, int times);

// The peak memory of a process that builds the language and reads so many lines.
long PeakKilobytes(const Language& language, const Kind& kind, int count);

#endif  // BENCH_PEER_PEERS_H_
