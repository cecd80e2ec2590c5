// The token that the lexer reads into.

#ifndef PARSER_YCLUIWORKTOKEN_H_
#define PARSER_YCLUIWORKTOKEN_H_

#include "foundation/YStack.h"
#include "lex/YcluiToken.h"

// A token keeps its arguments from one text to the next until they are complete. While it is
// processed, a nested text is read into another one, which starts as a copy of it, since what a
// token held before is visible in the next one read into it.
class YcluiWorkToken {
 public:
  YcluiWorkToken();
  YcluiWorkToken(const YcluiWorkToken&) = delete;
  YcluiWorkToken& operator=(const YcluiWorkToken&) = delete;
  ~YcluiWorkToken();

  // Whether there was memory for it. Without, only isOpen and dropOpen may be called.
  bool exists() const { return token_ != nullptr; }
  const YcluiToken& operator*() const { return *token_; }
  const YcluiToken* operator->() const { return token_; }
  // The token to read into; not the one that is in use.
  YcluiToken& forReading() {
    if (isUsed_) renew();
    return *token_;
  }

  // Whether it waits for the rest of its arguments.
  bool isOpen() const { return exists() && token_->underConstruction() != 0; }
  void dropOpen() {
    if (exists()) token_->setNeedMore(0);
  }

  // Keeps the present token unchanged for its own lifetime.
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

  // Replaces the token, which is in use, by a copy.
  void renew();

 private:
  YcluiToken* token_;
  bool isUsed_ = false;
  YStack<YcluiToken*> spares_;
};

#endif  // PARSER_YCLUIWORKTOKEN_H_
