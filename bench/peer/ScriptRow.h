// Commands that the script engine runs.

#ifndef BENCH_PEER_SCRIPTROW_H_
#define BENCH_PEER_SCRIPTROW_H_

// Starts the script engine and prints what a plain call costs: Guile's own evaluation of the text,
// the engine, and a typed line whose command is that text. Answers the ratio of the second to the
// first, 0 without an engine.
double PrintScriptTable(int calls, int repetitions);

#endif  // BENCH_PEER_SCRIPTROW_H_
