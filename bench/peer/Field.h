// The contenders, side by side over one language.

#ifndef BENCH_PEER_FIELD_H_
#define BENCH_PEER_FIELD_H_

#include <memory>
#include <string>
#include <vector>

#include "bench/peer/Contender.h"
#include "bench/peer/SideBySide.h"

// Each operation answers one cell for each contender, and an empty one for a contender that is not
// installed or has nothing of that kind. The language outlives the field.
class Field {
 public:
  explicit Field(const Language& language);

  // Nanoseconds a line. The loop knows no short forms: it reads whole words then.
  std::vector<Measured> read(Spelling spelling, int count, int repetitions) const;
  // Nanoseconds a completion, of yqrtClui and the peers; the loop has none.
  std::vector<Measured> complete(const std::string& prefix, int repetitions) const;
  // The same with a completion behind a command's word before each one.
  std::vector<Measured> completeInTurn(const std::string& prefix, int repetitions) const;
  // Nanoseconds a line, of yqrtClui without a log and with one.
  std::vector<Measured> log(int count, int repetitions) const;

 private:
  static constexpr int Completions = 20;

  const Language& language_;
  std::vector<std::unique_ptr<Contender>> contenders_;

  PeerWork reading(std::size_t index, Spelling spelling, int count) const;
  PeerWork completing(std::size_t index, const std::string& prefix, bool isInTurn) const;
  std::vector<Measured> completions(const std::string& prefix, bool isInTurn,
                                    int repetitions) const;
};

// Nanoseconds a command for building a language and taking it down.
std::vector<Measured> BuildSideBySide(const Language& language, int repetitions);

#endif  // BENCH_PEER_FIELD_H_
