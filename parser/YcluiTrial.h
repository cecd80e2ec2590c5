// What a parser would do with a text, token by token. Internal to the parser.

#ifndef PARSER_YCLUITRIAL_H_
#define PARSER_YCLUITRIAL_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "foundation/YString.h"
#include "lex/YcluiTrialLex.h"
#include "parser/YcluiTrialState.h"
#include "parser/YcluiWorkToken.h"
#include "syntax/YcluiNfa.h"

class YcluiParserCore;

// Reads a text as `interpret` of a parser would, on a copy of the walker and with a lexer that
// changes nothing. Commands and callbacks are not called; they are supposed to leave the parser as
// it is.
class YcluiTrial {
 public:
  explicit YcluiTrial(const YcluiParserCore& core);

  enum class Verdict : std::uint8_t {
    Unread,    // the lexer could not read all of it
    Open,      // its arguments are incomplete; the rest of its text is not read
    Set,       // it sets a variable
    Replaced,  // it is an alias or a variable; the tokens of its text follow, one level deeper
    Accepted,
    Refused,
  };
  struct Step {
    Verdict verdict = Verdict::Unread;
    int depth = 0;             // 0 for a token of the text, 1 for one of an alias in it
    bool isContinued = false;  // the token was open before
    std::uint32_t tokenId = 0;
    long begin = 0;                   // as the lexer counts, of a token that is not continued
    long wordEnd = -1;                // see YcluiLex::wordEnd
    unsigned int code = YErrNothing;  // recorded for the failure
    // That accepted it, or would accept it when its arguments could be read.
    const YcluiSyntaxNode* node = nullptr;
    bool endsCommand = false;
    bool isSupposed = false;  // a command would have run before it
  };

  // The parser's present state.
  void present(YcluiTrialState& state) const;
  // Whether the present syntax has that generation.
  bool isPresent(std::uint64_t generation) const;
  // Makes the state one between commands. REQUIRES: the parser has a syntax.
  void clear(YcluiTrialState& state) const;

  // Starts from a state of the present syntax, whose unread text precedes this one.
  void begin(const YcluiTrialState& state, std::string_view text);
  // Reads the next token. False at the end of what interpret would read.
  bool next(Step& step);

  // After the last `next`, the state in which the next text is read.
  void end(YcluiTrialState& state) const;
  // The same for a text that is appended to this one. REQUIRES: the last token was refused because
  // the text ended in its arguments.
  void endInside(YcluiTrialState& state) const;

  // of the lexer count from the unread text on.
  const YcluiTrialLex& lexer() const { return lexer_; }
  // The length of that text, 0 when nothing in it was a token.
  long unreadBefore() const { return unreadBefore_; }
  const YcluiWorkToken& token() const { return token_; }
  const YcluiNfa& walker() const { return walker_; }
  // Whether a command would have run.
  bool isSupposed() const { return isSupposed_; }
  // At the end: whether text follows that interpret would not read.
  bool leavesText() const { return leavesText_; }
  // Whether a token waits for arguments.
  bool isOpen() const { return token_.isOpen(); }
  // Whether a command has begun and is not complete.
  bool isInCommand() const { return hasTokens_ || token_.isOpen(); }
  // The command that a word would have to be admitted by: null when there is none, or when the
  // present command has begun.
  const YcluiSyntaxNode* interrupted() const { return first_ == nullptr ? interrupted_ : nullptr; }

 private:
  const YcluiParserCore& core_;
  YcluiTrialLex lexer_;
  YcluiNfa walker_;
  YcluiNfa spare_;  // for a look ahead
  YcluiWorkToken token_;
  YString text_;  // ends with NUL, as the lexer wants it
  long unreadBefore_ = 0;
  std::uint64_t generation_ = 0;
  YcluiAssignments assignments_;  // that the lexer has carried out
  // Those that it has not; empty between operations.
  std::vector<const YcluiAssignment*, YAllocator<const YcluiAssignment*>> missing_;
  const YcluiSyntaxNode* first_ = nullptr;  // on which the present command began
  const YcluiSyntaxNode* interrupted_ = nullptr;
  int depth_ = 0;
  int expansions_ = 0;  // since the last token of depth 0
  bool isSupposed_ = false;
  bool hasTokens_ = false;  // in the frame
  bool isOver_ = false;
  bool leavesText_ = false;

  static void keepOpen(YcluiTrialState& state, const YcluiToken& token, std::size_t expanded);
  static void keepToken(YcluiTrialState& state, const YcluiWorkToken& token, std::size_t expanded);
  void setVariables(const YcluiAssignments& wanted);
  bool findToken();
  void read(Step& step, const YErrAside& aside);
  void expand(Step& step, const YErrAside& aside);
  void accept(Step& step);
  const YcluiSyntaxNode* stepInto(Step& step);
  void lookAhead(Step& step);
  void leaveText();
};

#endif  // PARSER_YCLUITRIAL_H_
