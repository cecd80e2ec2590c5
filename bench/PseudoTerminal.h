// A program in a terminal of its own, and somebody at its keyboard.

#ifndef BENCH_PSEUDOTERMINAL_H_
#define BENCH_PSEUDOTERMINAL_H_

#include <sys/types.h>

#include <string>
#include <vector>

class PseudoTerminal {
 public:
  // 100 columns by 30 rows.
  explicit PseudoTerminal(const std::vector<std::string>& command);
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal();

  // Reads what comes until nothing has come for so long; false when nothing came at all within ten
  // seconds.
  bool settle(int milliseconds);
  // Presses a key and answers the seconds until the first byte of the answer, of which at least so
  // many bytes must come; negative when they do not.
  double press(const std::string& bytes, std::size_t atLeast);

 private:
  int master_ = -1;
  pid_t child_ = -1;
  std::size_t answered_ = 0;

  bool readWithin(int milliseconds);
};

#endif  // BENCH_PSEUDOTERMINAL_H_
