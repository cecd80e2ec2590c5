// How the primitives read their arguments. Internal to script/.
//
// When the argument is invalid, a pop clears bit 0 of the status and returns null or 0.

#ifndef SCRIPT_YCSCMARGUMENTS_H_
#define SCRIPT_YCSCMARGUMENTS_H_

#include <cstdint>
#include <limits>

#include "platform/engine/ScmVMExternal.h"

class YcluiParser;

// Reports to the engine that the argument at that position is not of the expected kind, and clears
// bit 0.
void ycscmRefuse(YArgNum position, YScmArgType expected, YStatus& status);

// Whether a number of a script is in the range of a narrower type.
template <class Narrow>
bool ycscmFits(long value) {
  return value >= static_cast<long>(std::numeric_limits<Narrow>::min()) &&
         value <= static_cast<long>(std::numeric_limits<Narrow>::max());
}

bool ycscmLongIsOnTop();

// Pops argument 1 of most primitives. Records YErrNotAlive for a long that is no existing parser.
YcluiParser* ycscmPopParser(YStatus& status);

// The same for an address that was already popped.
YcluiParser* ycscmLiveParser(long address, YStatus& status);

const char* ycscmPopString(YArgNum position, YStatus& status);

// Pops a token id for a syntax node, cut to the 24 bits of an id. Records YErrBadSyntaxArgument for
// an argument that is no long and for the id 0, which no token has.
std::uint32_t ycscmPopTokenId(YArgNum position, YStatus& status);

// Destroys the parsers that scripts have deleted, unless `parser` is playing a file, because one of
// its lines may have called the primitive.
void ycscmCleanUp(const YcluiParser& parser);

// Writes a line to the standard error stream: "CLUI Error: " and the text.
void ycscmPrintError(const char* text);

#endif  // SCRIPT_YCSCMARGUMENTS_H_
