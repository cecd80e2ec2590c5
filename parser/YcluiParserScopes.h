// What keeps a parser's objects alive while callbacks and commands may do away with them. Only the
// files of YcluiParser include this.

#ifndef PARSER_YCLUIPARSERSCOPES_H_
#define PARSER_YCLUIPARSERSCOPES_H_

#include "parser/YcluiParser.h"

// An operation of the parser is on the call stack: the mortuary waits, and graphs that are replaced
// live on until the outermost one returns.
class YcluiParser::Running {
 public:
  explicit Running(YcluiParser& parser) : parser_(parser) { ++parser_.running; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
  ~Running() {
    if (--parser_.running == 0) parser_.freeRetired();
  }

 private:
  YcluiParser& parser_;
};

// An operation goes on with a frame after it has called out. A frame that goes meanwhile is
// destroyed by its last user, so while it is used no other frame can have its address.
class YcluiParser::FrameUse {
 public:
  explicit FrameUse(YcluiLineParser& frame) : frame_(frame) { ++frame_.own.users; }
  FrameUse(const FrameUse&) = delete;
  FrameUse& operator=(const FrameUse&) = delete;
  ~FrameUse() {
    if (--frame_.own.users == 0 && frame_.own.isGone) delete &frame_;
  }

 private:
  YcluiLineParser& frame_;
};

// Callbacks look at the texts of a frame.
class YcluiParser::TextUse {
 public:
  explicit TextUse(YcluiLineParser& frame) : use_(frame), frame_(frame), held_(frame.holdTexts()) {}
  TextUse(const TextUse&) = delete;
  TextUse& operator=(const TextUse&) = delete;
  ~TextUse() { frame_.releaseTexts(held_); }

 private:
  FrameUse use_;
  YcluiLineParser& frame_;
  std::uint32_t held_;
};

// The work token goes on its way. It stays as it is until then: what is read meanwhile is read into
// a copy, which becomes the work token.
class YcluiParser::TokenUse {
 public:
  explicit TokenUse(YcluiParser& parser) : parser_(parser), token_(*parser.workToken) {
    parser_.workTokenLent = true;
  }
  TokenUse(const TokenUse&) = delete;
  TokenUse& operator=(const TokenUse&) = delete;
  ~TokenUse() {
    if (parser_.workToken == &token_) {
      parser_.workTokenLent = false;
    } else {
      parser_.spareTokens.push(&token_);
    }
  }
  YcluiToken& operator*() const { return token_; }

 private:
  YcluiParser& parser_;
  YcluiToken& token_;
};

// One call of a recursion that is counted.
class YcluiParser::Depth {
 public:
  explicit Depth(int& count) : count_(count) { ++count_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;
  ~Depth() { --count_; }

 private:
  int& count_;
};

#endif  // PARSER_YCLUIPARSERSCOPES_H_
