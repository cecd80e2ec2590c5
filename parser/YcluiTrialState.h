// The state of a trial between two texts. Internal to the preview.

#ifndef PARSER_YCLUITRIALSTATE_H_
#define PARSER_YCLUITRIALSTATE_H_

#include <cstddef>
#include <cstdint>

#include "foundation/YString.h"
#include "lex/YcluiToken.h"
#include "parser/YcluiAssignments.h"
#include "syntax/YcluiNfa.h"

struct YcluiTrialState {
  std::uint64_t generation = 0;  // of the syntax; 0 without one
  YcluiNfa walker;
  const YcluiSyntaxNode* first = nullptr;  // on which the present command began
  bool hasTokens = false;                  // in the frame
  bool isSupposed = false;                 // a command would have run
  // A token waits for arguments: the token without the values of those that it has, which decide
  // nothing and may be many, and what its strings have of the bytes that they may have. All that
  // means nothing otherwise.
  bool isOpen = false;
  YString word;
  std::uint32_t tokenId = 0;
  YcluiTokenType type = YcluiTokenNone;
  int argc = 0;
  std::size_t expanded = 0;
  YString unread;  // text that comes before the next one
  YcluiAssignments assignments;

  // Whether no command and no token has begun, and no text is left: all but the assignments and
  // isSupposed is then as for any other such state of this syntax.
  bool isBetweenCommands() const;
  // Makes it such a state. The walker is already in the graph.
  void clear();

  bool operator==(const YcluiTrialState& other) const;
};

#endif  // PARSER_YCLUITRIALSTATE_H_
