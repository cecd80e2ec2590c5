// Handling of SIGINT (Control-C).

#ifndef PROGRAM_CLUIINTERRUPT_H_
#define PROGRAM_CLUIINTERRUPT_H_

// Installs the handler: the first SIGINT stops the running script text and requests the end of the
// run, a second one ends the process. A SIGINT that was ignored at the start stays ignored.
void CluiCatchInterrupt();

// With true, a SIGINT does not stop script text, because the run ends after the current line.
void CluiFinishLineOnInterrupt(bool finish);

// Whether a SIGINT has arrived and was not cleared.
bool CluiInterrupted();

// Changes the handler so that no SIGINT ends the process: each stops the running script text.
void CluiKeepCatchingInterrupts();
void CluiClearInterrupt();

// A descriptor that becomes readable when the signal arrives, for poll(); -1 when there is none.
int CluiInterruptDescriptor();
// Makes the descriptor readable. Async-signal-safe.
void CluiWake();

#endif  // PROGRAM_CLUIINTERRUPT_H_
