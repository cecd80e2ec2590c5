// A reference implementation of the walker.

#ifndef FUZZ_WALKER_REFERENCE_H_
#define FUZZ_WALKER_REFERENCE_H_

#include <cstddef>
#include <cstdint>
#include <string>

// Makes a graph and a walk from the bytes, carries out the walk with the walker and with the
// reference, and returns the first difference, empty when there is none. Any bytes are valid: those
// up to the first 0 are the graph, the others the walk. In the walk, 8 times an id below 5 is a
// step with that id, and 2 more is the same step, four times from the start; 4 is the id of an
// indefinite node. Other bytes change the graph or the indefinite nodes, go back, reset or copy the
// walker.
//
// A byte of the graph below 192 adds a sign, by its lower half, to the text of a syntax
// (tests/support/syntax.h). Any other links the two nodes that the next two bytes choose, from 240
// on by way of many new nodes.
constexpr const char* GraphSigns[] = {" 3", " [", "]*", " [", " |", " 1", " 2", " |",
                                      ")",  " [", "]*", " [", "]",  " 1", " 2", " |"};
std::string CompareWalkers(const std::uint8_t* bytes, std::size_t count);

#endif  // FUZZ_WALKER_REFERENCE_H_
