#include "bench/peer/Field.h"

#include <algorithm>

Field::Field(const Language& language) : language_(language) {
  for (const ContenderKind& kind : ContenderKinds()) {
    contenders_.push_back(kind.make != nullptr ? kind.make(language) : nullptr);
  }
}

WorkRow Field::reading(Spelling spelling, int count) const {
  WorkRow row{{}, count};
  for (std::size_t i = 0; i < contenders_.size(); ++i) {
    row.works.push_back(reading(i, spelling, count));
  }
  return row;
}

WorkRow Field::completing(const std::string& prefix, bool isInTurn) const {
  WorkRow row{{}, Completions};
  for (std::size_t i = 1; i < contenders_.size(); ++i) {
    row.works.push_back(completing(i, prefix, isInTurn));
  }
  return row;
}

WorkRow Field::logging(int count, const std::string& file) const {
  Contender* clui = contenders_[1].get();
  const PeerWork plain = reading(1, Spelling::Whole, count);
  const PeerWork logged = [clui, plain, file] {
    return clui->log(file.c_str()) && plain() && clui->log(nullptr);
  };
  return {{plain, logged}, count};
}

PeerWork Field::reading(std::size_t index, Spelling spelling, int count) const {
  Contender* contender = contenders_[index].get();
  const bool isShort = spelling == Spelling::Short;
  const bool canRead = !isShort || index == 0 || ContenderKinds()[index].takesShortForms;
  if (contender == nullptr || !canRead) return {};
  const auto lines = LinesOf(language_, isShort && index == 0 ? Spelling::Whole : spelling, count);
  const bool isRefused = spelling == Spelling::Unknown || spelling == Spelling::Misplaced;
  const Outcome expected = isRefused ? Outcome{0, count} : Outcome{SumOf(lines), 0};
  TypedLines typed;
  for (const Line& line : lines) typed.add(contender->typed(line));
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

WorkRow Building(const Language& language, int times) {
  WorkRow row{{}, static_cast<long>(language.words.size()) * times};
  for (const ContenderKind& kind : ContenderKinds()) {
    if (kind.make == nullptr) {
      row.works.emplace_back();
      continue;
    }
    row.works.push_back([&kind, &language, times] {
      bool isGood = true;
      for (int i = 0; i < times; ++i) isGood = kind.make(language) != nullptr && isGood;
      return isGood;
    });
  }
  return row;
}
