// Lets operations on the files of this test program fail.

#ifndef TESTS_COMMON_FILE_FAULTS_H_
#define TESTS_COMMON_FILE_FAULTS_H_

enum class FileFault {
  Once,     // one operation fails
  ForGood,  // and all behind it
  Partly,   // one fails, and a write has written half of its bytes
};

// Of the coming operations on files that the floors open, the one at `index`, from 0, fails:
// openings, reads, writes, seeks and closings count, as the system sees them. A negative index
// fails none. A closing that fails has closed the file all the same. Answers whether one has failed
// since the last call.
bool FailFileOperation(int index, FileFault fault = FileFault::Once);

#endif  // TESTS_COMMON_FILE_FAULTS_H_
