// Codes of the error manager that have not been reported yet.

#ifndef PROGRAM_CLUIPENDINGCODES_H_
#define PROGRAM_CLUIPENDINGCODES_H_

#include <vector>

#include "foundation/YErr.h"
#include "program/CluiReading.h"

struct CluiCode {
  unsigned int code;
  YErrSeverity severity;
  CluiPlace place;
  CluiTokenStart token;
};

// A code belongs to the message about the word or the command that pushed it, and which one that is
// becomes known afterwards only. Until then it waits here.
class CluiPendingCodes {
 public:
  bool isFull() const { return codes_.size() >= AtMost; }
  void add(const CluiCode& code) { codes_.push_back(code); }
  // The code added last, 0 for none.
  unsigned int last() const { return codes_.empty() ? 0 : codes_.back().code; }

  // Removes the codes added last that belong to the token. Returns the last of them, 0 for none.
  unsigned int takeOf(const CluiTokenStart& token);
  // Removes the codes added last that equal the very last.
  void dropLast();
  void drop(unsigned int code);
  std::vector<CluiCode> takeAll();

 private:
  static constexpr std::size_t AtMost = 64;

  std::vector<CluiCode> codes_;
};

#endif  // PROGRAM_CLUIPENDINGCODES_H_
