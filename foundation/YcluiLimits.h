// How deep, how long and how many: where the library refuses, and with which code.
//
// What is refused costs nothing but itself, and everything around it goes on. Texts, lines,
// syntaxes and dictionaries have no bound of their own; a text of 4 GiB counts as no memory. Texts
// that grow by expansion are the exception, since each line of input can double them.

#ifndef FOUNDATION_YCLUILIMITS_H_
#define FOUNDATION_YCLUILIMITS_H_

#include <cstdint>

// Calls inside one another; YErrTooDeep behind that.

// Texts that are suspended in a lexer for another one, that is aliases inside aliases.
constexpr int YcluiMostSuspendedTexts = 200;
// Aliases and references to variables that one word of the text given to the outermost `interpret`
// stands for, those in their texts included: an alias whose text names it twice ends, although its
// depth alone would let it go on for ages.
constexpr int YcluiMostExpansions = 200000;
// `interpret` from commands and callbacks of the same parser, texts of aliases not counted. Chosen,
// like the next one, so that an ordinary stack of 8 MiB holds all of them.
constexpr int YcluiMostNestedCommands = 200;
constexpr int YcluiMostNestedPlaybacks = 64;
// Variable forms that stand in each other's index.
constexpr int YcluiMostIndexNesting = 200;

// Bytes of a text that values were put into: the strings of one token together, and a command that
// is made from a template; and of all texts of aliases and variables that one word of the outermost
// text stands for. YErrTextTooLong beyond that, before the longer text is made. A text that is
// given at this length has no bound.
constexpr std::uint32_t YcluiLongestExpansion = 16U << 20;

// Elements of an array variable, whether a text or a script asks; YErrOutsideArray behind that.
constexpr std::uint32_t YcluiMostElements = 65536;
// A list of a script is followed so far before it counts as a circle, and is a bad argument.
constexpr std::uint32_t YcluiMostListElements = 1U << 17;
// Arguments of clui-token, the parser included; more are a wrong number. So a script declares words
// of ten arguments at most, nine with an id of its own, and a host words of any number.
constexpr std::uint32_t YcluiMostTokenArguments = 12;

// The bits of an id: what is given is cut to them.
constexpr std::uint32_t YcluiIdMask = 0xFFFFFF;

// A text that brings a line of the log above so many bytes is followed by an end of line.
constexpr int YcluiLongestLogLine = 1024;
// A paused playback goes on with pieces of so many bytes at most.
constexpr int YcluiLongestPiece = 1023;

// Errors that the manager remembers.
constexpr int YcluiKeptErrors = 256;

#endif  // FOUNDATION_YCLUILIMITS_H_
