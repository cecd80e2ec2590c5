// The limits of the library, and the code that is recorded beyond each.
//
// Exceeding a limit fails only the operation that exceeds it. Texts, command lines, syntaxes and
// dictionaries have no limit; a text of 4 GiB is treated as out of memory. Texts that grow by
// expansion are limited, since each line of input can double them.

#ifndef FOUNDATION_YCLUILIMITS_H_
#define FOUNDATION_YCLUILIMITS_H_

#include <cstdint>

// Nesting; YErrTooDeep beyond these limits.

// Aliases inside aliases: texts that a lexer has suspended to read another one.
constexpr int YcluiMostSuspendedTexts = 200;
// Aliases and variable references that one word of the text given to the outermost `interpret` may
// expand to, counting those in the expansions. The depth alone would let an alias whose text
// contains it twice expand almost without end.
constexpr int YcluiMostExpansions = 200000;
// Calls of `interpret` from commands and callbacks of the same parser; texts of aliases do not
// count. This limit and the next one are chosen so that a stack of 8 MiB is enough.
constexpr int YcluiMostNestedCommands = 200;
constexpr int YcluiMostNestedPlaybacks = 64;
// Variable references inside the index of another one.
constexpr int YcluiMostIndexNesting = 200;

// In bytes, the limit of each of: all strings of one token, a command that is made from a template,
// and all texts of aliases and variables that one word of the outermost text expands to.
// YErrTextTooLong beyond that, before the longer text is built. The length of a text that a caller
// passes is not limited.
constexpr std::uint32_t YcluiLongestExpansion = 16U << 20;

// Elements of an array variable; YErrOutsideArray beyond that.
constexpr std::uint32_t YcluiMostElements = 65536;
// Elements of a list argument of a script. A longer list is assumed to be circular and is an
// invalid argument.
constexpr std::uint32_t YcluiMostListElements = 1U << 17;
// Arguments of clui-token, including the parser. So a script can declare words of at most ten
// arguments, or nine when it gives an id; a host can declare any number.
constexpr std::uint32_t YcluiMostTokenArguments = 12;

// An id has 24 bits; the upper bits of a given one are ignored.
constexpr std::uint32_t YcluiIdMask = 0xFFFFFF;

// A line of the log that exceeds this number of bytes is ended after the text that exceeds it.
constexpr int YcluiLongestLogLine = 1024;
// A playback that continues after a pause reads at most this number of bytes at a time.
constexpr int YcluiLongestPiece = 1023;

// Errors that the error manager keeps.
constexpr int YcluiKeptErrors = 256;

#endif  // FOUNDATION_YCLUILIMITS_H_
