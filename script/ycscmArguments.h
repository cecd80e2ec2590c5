// How the primitives read their arguments. Internal to script/.
//
// Each pop clears bit 0 of the status when the argument will not do, and then answers null or 0.

#ifndef SCRIPT_YCSCMARGUMENTS_H_
#define SCRIPT_YCSCMARGUMENTS_H_

#include <cstdint>
#include <limits>

#include "platform/engine/ScmVMExternal.h"

class YcluiParser;

// Tells the engine that the argument at that position is not what was expected, and clears bit 0.
void ycscmRefuse(YArgNum position, YScmArgType expected, YStatus& status);

// Whether a script's number goes into a narrower type as it is.
template <class Narrow>
bool ycscmFits(long value) {
  return value >= static_cast<long>(std::numeric_limits<Narrow>::min()) &&
         value <= static_cast<long>(std::numeric_limits<Narrow>::max());
}

bool ycscmLongIsOnTop();

// Argument 1 of most primitives. YErrNotAlive is pushed for a long that is no live parser.
YcluiParser* ycscmPopParser(YStatus& status);

// The same for an address that has been popped already.
YcluiParser* ycscmLiveParser(long address, YStatus& status);

const char* ycscmPopString(YArgNum position, YStatus& status);

// A token id for a syntax node, cut to the 24 bits of an id. YErrBadSyntaxArgument is pushed for
// what is no long, and for 0, which no token has.
std::uint32_t ycscmPopTokenId(YArgNum position, YStatus& status);

// Destroys the parsers that scripts have deleted, unless `parser` is in the middle of a playback,
// which may have led here by one of its lines.
void ycscmCleanUp(const YcluiParser& parser);

// A line on the standard error stream: "CLUI Error: " and the text.
void ycscmPrintError(const char* text);

#endif  // SCRIPT_YCSCMARGUMENTS_H_
