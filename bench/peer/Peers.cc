#include "bench/peer/Peers.h"

#include <algorithm>

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds = {
      {"loop", &MakeHandLoop, false, false},
      {"yqrtClui", &MakeClui, true, true},
#ifdef PEER_HAS_LIBCLI
      {"libcli", &MakeLibcli, true, true},
#endif
#ifdef PEER_HAS_TCL
      {"Tcl", &MakeTcl, false, true},
#endif
  };
  return kinds;
}

Peers::Peers(int commands)
    : language_(commands),
      withLog_(MakeCluiWithLog(language_)),
      declared_(MakeCluiLanguage(language_)) {
  for (const Kind& kind : Kinds()) implementations_.push_back(kind.make(language_));
}

void Peers::addReading(std::vector<Task>& tasks, const char* row, Spelling spelling,
                       int lines) const {
  for (std::size_t i = 0; i < Kinds().size(); ++i) {
    std::string kind = Kinds()[i].name;
    if (spelling == Spelling::Short) {
      if (!Kinds()[i].acceptsShortForms) continue;
      kind += ", short forms";
    }
    tasks.push_back(reading(*implementations_[i], row, kind, spelling, lines));
  }
}

void Peers::addLogging(std::vector<Task>& tasks, const char* row, int lines) const {
  tasks.push_back(reading(*withLog_, row, "yqrtClui, with a log", Spelling::Whole, lines));
}

void Peers::addDeclared(std::vector<Task>& tasks, const char* row, int lines) const {
  tasks.push_back(reading(*declared_, row, "yqrtClui, in C++", Spelling::Whole, lines));
}

void Peers::addPreviewing(std::vector<Task>& tasks, const char* row, int count) const {
  Implementation* implementation = implementations_[1].get();
  TypedLines typed;
  for (const Line& line : LinesOf(language_, Spelling::Whole, count)) {
    typed.add(implementation->typed(line));
  }
  const auto size = static_cast<long>(language_.words.size());
  tasks.push_back({row, Kinds()[1].name, size, static_cast<double>(count), {[=] {
                     return implementation->preview(typed) == count;
                   }}});
}

Task Peers::reading(Implementation& implementation, const char* row, const std::string& kind,
                    Spelling spelling, int count) const {
  const auto lines = LinesOf(language_, spelling, count);
  const bool isRefused = spelling == Spelling::Unknown || spelling == Spelling::Misplaced;
  const Outcome expected = isRefused ? Outcome{0, count} : Outcome{SumOf(lines), 0};
  TypedLines typed;
  for (const Line& line : lines) typed.add(implementation.typed(line));
  const auto size = static_cast<long>(language_.words.size());
  return {row, kind, size, static_cast<double>(count), {[&implementation, expected, typed] {
            return implementation.read(typed) == expected;
          }}};
}

void Peers::addCompleting(std::vector<Task>& tasks, const char* row, std::size_t letters,
                          bool alternating) const {
  constexpr int Completions = 20;
  const std::string word = language_.words.front();
  const std::string prefix = word.substr(0, letters);
  const long least = std::count_if(language_.words.begin(), language_.words.end(),
                                   [&](const auto& other) { return other.starts_with(prefix); });
  for (std::size_t i = 0; i < Kinds().size(); ++i) {
    if (!Kinds()[i].completes) continue;
    Implementation* implementation = implementations_[i].get();
    const auto run = [=] {
      bool isRight = true;
      for (int n = 0; n < Completions; ++n) {
        if (alternating) implementation->completeAfter(word);
        isRight = implementation->complete(prefix.c_str()) >= least && isRight;
      }
      return isRight;
    };
    tasks.push_back(
        {row, Kinds()[i].name, static_cast<long>(language_.words.size()), Completions, {run}});
  }
}

std::vector<Task> BuildingTasks(const Language& language, const char* row, int times) {
  std::vector<Task> tasks;
  const auto size = static_cast<long>(language.words.size());
  for (const Kind& kind : Kinds()) {
    const auto run = [&kind, &language, times] {
      for (int i = 0; i < times; ++i) kind.make(language);
      return true;
    };
    tasks.push_back({row, kind.name, size, static_cast<double>(size * times), {run}});
  }
  return tasks;
}

long PeakKilobytes(const Language& language, const Kind& kind, int count) {
  return PeakKilobytes([&] {
    const auto implementation = kind.make(language);
    TypedLines typed;
    for (const Line& line : LinesOf(language, Spelling::Whole, count)) {
      typed.add(implementation->typed(line));
    }
    implementation->read(typed);
  });
}
