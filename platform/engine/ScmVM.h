// Our script engine, on GNU Guile 3, as a host sees it: starting, loading libraries and scripts,
// interrupting, and learning of errors. What a script library sees is ScmVMExternal.h.
//
// One engine per process, used by one thread. Text that crosses is in the system's encoding
// (Shift_JIS, code page 932) unless a line says otherwise.

#ifndef PLATFORM_ENGINE_SCMVM_H_
#define PLATFORM_ENGINE_SCMVM_H_

#include <cstddef>
#include <string>

#include "foundation/YStatus.h"
#include "foundation/YTypes.h"

// What a host is told of a script error.
struct ScmVMError {
  std::string message;  // in words, UTF-8: what went wrong and, for a primitive, which argument
  std::string text;     // the script text that failed, UTF-8; empty for an error in a file
  std::string file;     // the script file, empty when the text came through ExecuteString
  int line = 0;         // from 1, 0 when unknown
  int column = 0;       // from 1, 0 when unknown
  bool interrupted = false;  // the text was stopped by interrupt()
};

class YQRT_API ScmVM {
 public:
  // The memory that scripts may hold before their text is ended with an error.
  static constexpr std::size_t DefaultMemoryLimit = std::size_t{512} << 20;

  // Starts the engine in this thread, once; 0 with a reason in `error` when it cannot be.
  static YWord start(std::size_t memoryLimit, std::string& error);

  // Opens the script library of that file name, checks its five entry points, its name and its
  // table, calls its initialiser and binds each row as a procedure of that name. On failure nothing
  // is bound, and `error` says what is missing.
  static YWord openLibrary(const char* fileName, const char* libraryName, std::string& error);
  // Calls the cleanup of every library that was opened, last first.
  static void closeLibraries();

  // Runs a script file (UTF-8). 0 when it could not be read or failed; the error was told.
  static YWord loadFile(const char* fileName);

  // Makes a procedure of the host callable from scripts, under the rules of a primitive.
  static void bindProcedure(const char* name, void (*procedure)(std::uint32_t, YStatus&),
                            std::uint32_t required, std::uint32_t rest);

  // Called for each text that fails, once, from the innermost place. Without one, errors go to the
  // standard error stream.
  static void setErrorListener(void (*listener)(void* word, const ScmVMError& error), void* word);
  // Called with each text that ExecuteString is about to run.
  static void setTextListener(void (*listener)(void* word, const char* text), void* word);

  // Where the script that is loading stands: file (UTF-8) and line of the form being run, or an
  // empty name and 0 when no file is loading.
  static void place(std::string& file, int& line);

  // Stops the script text that is running, as soon as it can be stopped. May be called from a
  // signal handler. Without a running text nothing happens.
  static void interrupt();
};

#endif  // PLATFORM_ENGINE_SCMVM_H_
