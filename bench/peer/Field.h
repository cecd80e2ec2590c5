// The contenders, side by side over one language.

#ifndef BENCH_PEER_FIELD_H_
#define BENCH_PEER_FIELD_H_

#include <memory>
#include <string>
#include <vector>

#include "bench/peer/Contender.h"
#include "bench/peer/SideBySide.h"

// Each operation answers a work for each contender, and an empty one for a contender that is not
// installed or has nothing of that kind. The language outlives the field, and this the works.
class Field {
 public:
  explicit Field(const Language& language);

  // A unit is a line. The loop knows no short forms: it reads whole words then.
  WorkRow reading(Spelling spelling, int count) const;
  // A unit is a completion, of yqrtClui and the peers; the loop has none.
  WorkRow completing(const std::string& prefix) const { return completing(prefix, false); }
  // The same with a completion behind a command's word before each one.
  WorkRow completingInTurn(const std::string& prefix) const { return completing(prefix, true); }
  // A unit is a line, of yqrtClui without a log and with one in that file.
  WorkRow logging(int count, const std::string& file) const;

 private:
  static constexpr int Completions = 20;

  const Language& language_;
  std::vector<std::unique_ptr<Contender>> contenders_;

  PeerWork reading(std::size_t index, Spelling spelling, int count) const;
  PeerWork completing(std::size_t index, const std::string& prefix, bool isInTurn) const;
  WorkRow completing(const std::string& prefix, bool isInTurn) const;
};

// A unit is a command of a language that is built and taken down, that often.
WorkRow Building(const Language& language, int times);

#endif  // BENCH_PEER_FIELD_H_
