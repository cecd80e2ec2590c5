// A bounded recursion.

#ifndef PARSER_YCLUIDEPTH_H_
#define PARSER_YCLUIDEPTH_H_

// Counts one call of a recursion for its own lifetime.
class YcluiDepth {
 public:
  explicit YcluiDepth(int& count) : count_(count) { ++count_; }
  YcluiDepth(const YcluiDepth&) = delete;
  YcluiDepth& operator=(const YcluiDepth&) = delete;
  ~YcluiDepth() { --count_; }

 private:
  int& count_;
};

#endif  // PARSER_YCLUIDEPTH_H_
