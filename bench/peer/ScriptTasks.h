// Commands that the script engine runs.

#ifndef BENCH_PEER_SCRIPTTASKS_H_
#define BENCH_PEER_SCRIPTTASKS_H_

#include <string>
#include <vector>

#include "bench/Measure.h"

// Starts the script engine and returns three tasks: a plain call evaluated by Guile, the same text
// run by the engine, and a typed line whose command is that text. Without an engine the
// program ends.
std::vector<Task> ScriptTasks(const std::string& row, int calls);

#endif  // BENCH_PEER_SCRIPTTASKS_H_
