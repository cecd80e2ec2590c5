#include "bench/peer/Field.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

Field::Field(const Language& language) : language_(language) {
  for (const ContenderKind& kind : ContenderKinds()) {
    contenders_.push_back(kind.make != nullptr ? kind.make(language) : nullptr);
  }
}

std::vector<Measured> Field::read(Spelling spelling, int count, int repetitions) const {
  std::vector<PeerWork> works;
  for (std::size_t i = 0; i < contenders_.size(); ++i) {
    works.push_back(reading(i, spelling, count));
  }
  return SideBySide(works, count, repetitions);
}

std::vector<Measured> Field::complete(const std::string& prefix, int repetitions) const {
  return completions(prefix, false, repetitions);
}

std::vector<Measured> Field::completeInTurn(const std::string& prefix, int repetitions) const {
  return completions(prefix, true, repetitions);
}

std::vector<Measured> Field::completions(const std::string& prefix, bool isInTurn,
                                         int repetitions) const {
  std::vector<PeerWork> works;
  for (std::size_t i = 1; i < contenders_.size(); ++i) {
    works.push_back(completing(i, prefix, isInTurn));
  }
  return SideBySide(works, Completions, repetitions);
}

std::vector<Measured> Field::log(int count, int repetitions) const {
  Contender* clui = contenders_[1].get();
  const PeerWork plain = reading(1, Spelling::Whole, count);
  std::string name = (std::filesystem::temp_directory_path() / "peer_bench.XXXXXX").string();
  const int file = mkstemp(name.data());
  if (file >= 0) close(file);
  const PeerWork logged = [clui, plain, name] {
    return clui->log(name.c_str()) && plain() && clui->log(nullptr);
  };
  std::vector<Measured> measured = SideBySide({plain, logged}, count, repetitions);
  std::filesystem::remove(name);
  return measured;
}

PeerWork Field::reading(std::size_t index, Spelling spelling, int count) const {
  Contender* contender = contenders_[index].get();
  const bool isShort = spelling == Spelling::Short;
  const bool canRead = !isShort || index == 0 || ContenderKinds()[index].takesShortForms;
  if (contender == nullptr || !canRead) return {};
  const auto lines = LinesOf(language_, isShort && index == 0 ? Spelling::Whole : spelling, count);
  const bool isRefused = spelling == Spelling::Unknown || spelling == Spelling::Misplaced;
  const Outcome expected = isRefused ? Outcome{0, count} : Outcome{SumOf(lines), 0};
  std::vector<std::string> typed;
  typed.reserve(lines.size());
  for (const Line& line : lines) typed.push_back(contender->typed(line));
  return [contender, expected, typed] { return contender->read(typed) == expected; };
}

PeerWork Field::completing(std::size_t index, const std::string& prefix, bool isInTurn) const {
  Contender* contender = contenders_[index].get();
  if (contender == nullptr) return {};
  const long least = std::count_if(language_.words.begin(), language_.words.end(),
                                   [&](const auto& word) { return word.starts_with(prefix); });
  const std::string word = language_.words.front();
  return [contender, prefix, least, isInTurn, word] {
    bool isGood = true;
    for (int i = 0; i < Completions; ++i) {
      if (isInTurn) contender->completeBehind(word);
      isGood = contender->complete(prefix.c_str()) >= least && isGood;
    }
    return isGood;
  };
}

std::vector<Measured> BuildSideBySide(const Language& language, int repetitions) {
  std::vector<PeerWork> works;
  for (const ContenderKind& kind : ContenderKinds()) {
    if (kind.make == nullptr) {
      works.emplace_back();
    } else {
      works.push_back([&kind, &language] { return kind.make(language) != nullptr; });
    }
  }
  return SideBySide(works, static_cast<long>(language.words.size()), repetitions);
}
