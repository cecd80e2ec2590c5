// The texts that were cut out of a line, newest first.

#ifndef TERMINAL_YCLUIKILLRING_H_
#define TERMINAL_YCLUIKILLRING_H_

#include <deque>
#include <string>
#include <string_view>

class YcluiKillRing {
 public:
  static constexpr std::size_t MostEntries = 64;

  // Beyond MostEntries the oldest entry is dropped.
  void add(std::string_view text);
  // Joins the text with the newest entry. REQUIRES: size() > 0
  void append(std::string_view text) { entries_.front() += text; }
  void prepend(std::string_view text) { entries_.front().insert(0, text); }

  std::size_t size() const { return entries_.size(); }
  // 0 is the newest one.
  const std::string& operator[](std::size_t index) const { return entries_[index]; }

 private:
  std::deque<std::string> entries_;
};

#endif  // TERMINAL_YCLUIKILLRING_H_
