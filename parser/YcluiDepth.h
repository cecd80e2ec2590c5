// The depth of a recursion. Internal to the parser.

#ifndef PARSER_YCLUIDEPTH_H_
#define PARSER_YCLUIDEPTH_H_

// Increments the count during its lifetime: one object per call that is running.
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
