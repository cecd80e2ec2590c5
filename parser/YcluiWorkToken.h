// The token that the lexer reads into. Internal to the parser.

#ifndef PARSER_YCLUIWORKTOKEN_H_
#define PARSER_YCLUIWORKTOKEN_H_

#include "foundation/YStack.h"
#include "lex/YcluiToken.h"

// The token keeps its arguments from one text to the next until they are complete. While it is
// being processed, a nested text is read into another token. That starts as a copy, because reading
// a word leaves the previous arguments in a token and hosts can see them.
class YcluiWorkToken {
 public:
  YcluiWorkToken();
  YcluiWorkToken(const YcluiWorkToken&) = delete;
  YcluiWorkToken& operator=(const YcluiWorkToken&) = delete;
  ~YcluiWorkToken();

  // Whether there was memory for the token. All operations but isOpen and dropOpen require it.
  bool exists() const { return token_ != nullptr; }
  const YcluiToken& operator*() const { return *token_; }
  const YcluiToken* operator->() const { return token_; }
  // The token to read into; never one that is in use.
  YcluiToken& forReading() {
    if (isUsed_) renew();
    return *token_;
  }

  // Whether some of its arguments are still missing.
  bool isOpen() const { return exists() && token_->underConstruction() != 0; }
  // Makes it a token whose arguments are missing. Those that it has, argument 0 included, are
  // `count`; their values mean nothing.
  void open(const char* word, std::uint32_t id, YcluiTokenType type, int count) {
    YcluiToken& token = forReading();
    token.setID(id);
    token.setType(type);
    token.setArgC(static_cast<std::uint32_t>(count));
    token.setArg0(word);
    token.setNeedMore(1);
  }
  // Ends that state; the arguments read so far stay in the token.
  void dropOpen() {
    if (exists()) token_->setNeedMore(0);
  }

  // Marks the present token as in use during its lifetime, so that nothing is read into it.
  class Use {
   public:
    explicit Use(YcluiWorkToken& work) : work_(work), token_(*work.token_) { work_.isUsed_ = true; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() {
      if (work_.token_ == &token_) {
        work_.isUsed_ = false;
      } else {
        work_.spares_.push(&token_);
      }
    }
    YcluiToken& operator*() const { return token_; }

   private:
    YcluiWorkToken& work_;
    YcluiToken& token_;
  };

  // Replaces the token by a copy; the previous one belongs to its user until that ends.
  void renew();

 private:
  YcluiToken* token_;
  bool isUsed_ = false;
  YStack<YcluiToken*> spares_;
};

#endif  // PARSER_YCLUIWORKTOKEN_H_
