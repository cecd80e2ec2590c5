// A slow walker to judge the real one by.

#ifndef FUZZ_WALKER_JUDGE_H_
#define FUZZ_WALKER_JUDGE_H_

#include <cstddef>
#include <cstdint>
#include <string>

// Makes a graph and a walk of the bytes, takes the walk with the walker and with the judge, and
// tells the first thing in which they differ; empty when they agree. Any bytes make a valid input:
// those up to the first 0 make the graph, and those behind it the walk. There, 8 times an id below
// 5 is a step, and 2 more the same from the start four times; 4 is the id of an indefinite node.
// Other bytes change the graph or the indefinite nodes, go back, reset or copy the walker.
//
// A byte of the graph stands for the sign of its place here, its low half counting (see Build);
// those from 192 on link two nodes that the two bytes behind it choose, from 240 on by way of many
// new ones.
constexpr char JudgeSigns[] = "3(*&/12|((*&/12|";
std::string JudgeWalk(const std::uint8_t* bytes, std::size_t count);

#endif  // FUZZ_WALKER_JUDGE_H_
