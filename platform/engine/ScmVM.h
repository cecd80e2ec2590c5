// Our script engine, on GNU Guile 3, as a host sees it: starting, loading libraries and scripts,
// interrupting, and learning of errors. What a script library sees is ScmVMExternal.h.
//
// One engine per process, used by the thread that started it: elsewhere ExecuteString fails, and a
// primitive that a script calls from a thread of its own raises an error. Names and texts that
// cross are bytes of the system's encoding (Shift_JIS, code page 932) unless a line says otherwise.
//
// Scripts run in the module (guile-user). An error, an abort, a continuation or `exit` ends the
// text in which it happens and never leaves it: (exit) and (exit 0) end it well, (exit n) ends it
// as failed. What scripts print and what C++ code prints through stdio arrive in the order of
// writing: stdout is flushed before a text and behind each primitive.

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
  std::string file;     // the script file, UTF-8; empty when the failing text is no file
  int line = 0;         // from 1, 0 when unknown: where the form at the top of the file begins that
  int column = 0;       // failed, or the place inside it that the reader or the expander names
  bool worded = false;  // the script said it itself, by `error` with a text
  bool interrupted = false;  // the text was stopped by interrupt()
};

class YQRT_API ScmVM {
 public:
  // The memory that scripts may hold before their text is ended with an error, in bytes.
  static constexpr std::size_t DefaultMemoryLimit = std::size_t{512} << 20;

  // Starts the engine in this thread, once; 0 with a reason in `error` when it cannot be. The
  // locale is the host's: output of scripts is in its encoding, in UTF-8 where none has been set. A
  // helper thread is made for interrupt(), and SIGURG gets a handler unless it has one.
  static YWord start(std::size_t memoryLimit, std::string& error);

  // Opens the script library of that file name (as dlopen takes it), checks its five entry points,
  // its name and its table, calls its initialiser and binds each row as a procedure of that name.
  // A library that is open already is left as it is. On failure nothing is bound, and `error` says
  // what is missing. At most 1024 procedures can be bound in a process.
  static YWord openLibrary(const char* fileName, const char* libraryName, std::string& error);
  // Calls the cleanup of every library that was opened, last first. They stay loaded; their
  // procedures must not be called any more.
  static void closeLibraries();

  // Runs a script file. The name is as the file system has it, the content UTF-8 in any locale. 0
  // when it could not be read or failed; the error was told. In a script, (load "name") looks
  // beside the file in which it is written.
  static YWord loadFile(const char* fileName);

  // Makes a procedure of the host callable from scripts, under the rules of a primitive. A C++
  // exception that it lets out becomes a script error.
  static void bindProcedure(const char* name, void (*procedure)(std::uint32_t, YStatus&),
                            std::uint32_t required, std::uint32_t rest);

  // Called for each text that fails, from the innermost one outwards. A failure is told once: an
  // outer text that goes on tells nothing, and of the nested texts that an interrupt or the memory
  // limit ends only the innermost tells it. Without a listener, errors go to the standard error
  // stream. The listener may run texts of its own.
  static void setErrorListener(void (*listener)(void* word, const ScmVMError& error), void* word);
  // Called with each text that ExecuteString is about to run.
  static void setTextListener(void (*listener)(void* word, const char* text), void* word);

  // Where the script that is loading stands: file (UTF-8) and line of the form at its top that is
  // being run, or an empty name and 0 when no file is loading.
  static void place(std::string& file, int& line);

  // Stops the text that is running, and those around it, as soon as they can be stopped: Scheme
  // code at once, also while it sleeps or reads; a primitive is left to return. May be called from
  // a signal handler. Without a running text nothing happens.
  static void interrupt();
};

#endif  // PLATFORM_ENGINE_SCMVM_H_
