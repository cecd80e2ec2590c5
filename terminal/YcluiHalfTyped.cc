#include "terminal/YcluiHalfTyped.h"

bool YcluiIsHalfTyped(const YcluiParser& parser) {
  return parser.numberOfToken() > 0 || parser.tokenIsOpen() != 0 || parser.nestingDepth() > 1;
}

void YcluiGiveUp(YcluiParser& parser) {
  parser.exhaust();
  const bool isOpen = parser.tokenIsOpen() != 0 || parser.numberOfToken() > 0;
  parser.dropOpenToken();
  if (isOpen || parser.nestingDepth() == 1) return parser.reset();
  parser.popFrame();
  YString_Array words;
  if (parser.completionList("", words) == 0) parser.reset();
}
