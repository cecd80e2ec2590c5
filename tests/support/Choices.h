// Turns the bytes of the fuzzer into choices and texts.

#ifndef TESTS_SUPPORT_CHOICES_H_
#define TESTS_SUPPORT_CHOICES_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// Consumes the bytes from the front, so that an input can be written by hand. At the end every
// choice is 0 and every text is empty.
class Choices {
 public:
  Choices(const std::uint8_t* bytes, std::size_t count) : at_(bytes), end_(bytes + count) {}

  bool more() const { return at_ != end_; }
  unsigned byte() { return more() ? *at_++ : 0; }
  unsigned below(unsigned count) { return byte() % count; }
  // The bytes up to the next 0, which is consumed too.
  std::string text() {
    std::string text;
    while (more() && *at_ != 0) text += static_cast<char>(*at_++);
    byte();
    return text;
  }
  // All remaining bytes, zeros included.
  std::string rest() {
    std::string all(at_, end_);
    at_ = end_;
    return all;
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

// Ends the process when the condition does not hold, which a fuzzer reports.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

#endif  // TESTS_SUPPORT_CHOICES_H_
