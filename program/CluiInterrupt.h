// Control-C.

#ifndef PROGRAM_CLUIINTERRUPT_H_
#define PROGRAM_CLUIINTERRUPT_H_

// From here on the first SIGINT stops the script text that is running and asks the run to end; a
// second one ends the process. A program that was started with the signal ignored goes on ignoring
// it.
void CluiCatchInterrupt();

// Whether the first SIGINT leaves script text alone, because the run ends behind the line at hand.
void CluiLetLineFinish(bool finish);

// Whether the run has been asked to end.
bool CluiInterrupted();

// From here on no SIGINT ends the process: each stops the text that is running.
void CluiKeepCatchingInterrupts();
// The interrupt has been answered.
void CluiForgetInterrupt();

// A descriptor that becomes readable with the signal, for waiting beside another; -1 without one.
int CluiInterruptDescriptor();

#endif  // PROGRAM_CLUIINTERRUPT_H_
