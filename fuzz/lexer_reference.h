// A reference implementation of the lexer.

#ifndef FUZZ_LEXER_REFERENCE_H_
#define FUZZ_LEXER_REFERENCE_H_

#include <cstddef>
#include <cstdint>
#include <string>

// Carries out the operations that the bytes encode with the lexer and with the reference, and
// returns the first difference in a token, a result, a code or an offset; empty when there is none.
// Of a fault it only compares that it is in its token. Any bytes are valid. An operation is a
// letter, its texts, each up to the next 0, and last of all, where an ID, INDEX or COUNT is named,
// one byte:
//   K NAME ID, k NAME SHORTEST ID    add a word
//   w NAME TYPES, a NAME TEXT        add a word with arguments, each type a byte mod 6, or an alias
//   ; BYTE                           add a delimiter
//   d NAME, u NAME                   delete a keyword, an alias
//   v NAME VALUE                     set a variable; see below
//   i NAME VALUE INDEX, l NAME VALUE COUNT    set one element of an array, the first elements
//   t TEXT                           give a text and read all of it
//   p TEXT, g                        append a text, read one token
//   ( TEXT, ), r, x                  push, pop, reset, drop the open token
// In a value, "=" begins a string, "," is the point 7,-8, "." the double 1e10, the empty text null;
// other texts are longs.
std::string CompareLexers(const std::uint8_t* bytes, std::size_t count);
// The same for operations in which "~" is written for 0.
std::string CompareLexers(std::string operations);

#endif  // FUZZ_LEXER_REFERENCE_H_
