// A slow lexer to compare the real one with.

#ifndef FUZZ_LEXER_REFERENCE_H_
#define FUZZ_LEXER_REFERENCE_H_

#include <cstddef>
#include <cstdint>
#include <string>

// Carries out the operations that the bytes encode with the lexer and with the reference, and
// returns the first difference in a token, a result, a code or an offset; empty when there is none.
// Any bytes are valid. An operation is a letter and its texts, each up to the next 0:
//   K NAME, k NAME SHORTEST, w NAME TYPES, a NAME TEXT, ; BYTE   add a word (a type is a byte mod
//   6) d NAME, u NAME                                               delete a keyword, an alias v
//   NAME VALUE, i NAME VALUE INDEX, l NAME VALUE COUNT         set a variable (a byte each at last)
//   t TEXT                                                       give a text and read all of it
//   p TEXT, g                                                    append a text, read one token
//   ( TEXT, ), r, x                                              push, pop, reset, drop open token
// In a value, "=" begins a string, "," makes the point 7,-8, "." the double 1e10, other texts are
// longs, and the empty one is null.
std::string CompareLexers(const std::uint8_t* bytes, std::size_t count);

#endif  // FUZZ_LEXER_REFERENCE_H_
