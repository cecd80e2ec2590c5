// The script engine, based on GNU Guile 3, as a host uses it: starting it, loading libraries and
// scripts, interrupting, and receiving errors. Script libraries use ScmVMExternal.h.
//
// There is one engine per process, used by the thread that started it: in another thread
// ExecuteString fails, and a primitive called by a script raises an error. Names and texts that are
// passed to and from the engine are in the encoding inside the process (YEncoding) unless a comment
// says otherwise; starting the engine fixes it.
//
// Scripts run in the module (guile-user). An error, an abort, a continuation or `exit` ends the
// text in which it happens, and only that text: (exit) and (exit 0) end it with success, (exit n)
// with failure. Output of scripts and output of C++ code through stdio appear in the order of
// writing: stdout is flushed before a text and after each primitive.

#ifndef PLATFORM_ENGINE_SCMVM_H_
#define PLATFORM_ENGINE_SCMVM_H_

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/YStatus.h"
#include "foundation/YTypes.h"

// A call that was running in a procedure of a script when an error was raised.
struct ScmVMCall {
  std::string procedure;  // UTF-8; empty for a procedure without a name
  std::string file;       // as it was loaded, UTF-8
  int line = 0;           // of the expression that was evaluated, from 1
  int column = 0;
};

// A script error, as reported to a host.
struct ScmVMError {
  std::string message;  // UTF-8: what failed and, for a primitive, which argument
  std::string text;     // the script text that failed, UTF-8; empty for an error in a file
  std::string file;     // the script file, UTF-8; empty when the failing text is no file
  // Line and column from 1, 0 when unknown: the start of the top-level form that failed, or the
  // position inside it that Guile's reader or expander reports.
  int line = 0;
  int column = 0;
  // The innermost calls of procedures of scripts, at most 10, the one that raised the error first.
  // A procedure whose last act is a call of another procedure of a script has ended by then. Empty
  // when the text itself raised it, when a script is being loaded, for a procedure that a local
  // binding encloses, and when the stack was used up.
  std::vector<ScmVMCall> calls;
  bool worded = false;       // the message is the script's own, from `error` with a text
  bool interrupted = false;  // the text was stopped by interrupt()
};

class YQRT_API ScmVM {
 public:
  // The default limit, in bytes, for the memory of scripts. A text that exceeds it fails.
  static constexpr std::size_t DefaultMemoryLimit = std::size_t{512} << 20;

  // Starts the engine in this thread; can be called once. Returns 0 with the reason in `error` on
  // failure. Output of scripts is in the encoding of the host's locale, or in UTF-8 when the host
  // has set none. Creates a helper thread for interrupt() and installs a handler for SIGURG unless
  // there is one.
  static YWord start(std::size_t memoryLimit, std::string& error);

  // Opens a script library, checks its five entry points, its name and its table, calls its
  // initialiser and binds each row of the table as a procedure. `fileName` is passed to dlopen, so
  // null is the program itself. script/YcluiLibrary.h has both names of the command library. Does
  // nothing for a library that is already open. On failure returns 0 with the reason in `error`,
  // and nothing is bound. At most 1024 procedures can be bound in a process.
  static YWord openLibrary(const char* fileName, const char* libraryName, std::string& error);
  // Calls the cleanup function of every opened library, last first. The libraries stay loaded, but
  // their procedures must not be called any more.
  static void closeLibraries();

  // Runs a script file. The name is in the encoding of the file system; the content is UTF-8 in any
  // locale. Returns 0 when the file could not be read or failed, after reporting the error to the
  // listener. In a script, (load "name") is relative to the folder of the file that contains it.
  static YWord loadFile(const char* fileName);

  // Makes a procedure of the host callable from scripts. It follows the rules of a primitive; a C++
  // exception that it throws becomes a script error.
  static void bindProcedure(const char* name, void (*procedure)(std::uint32_t, YStatus&),
                            std::uint32_t required, std::uint32_t rest);

  // Sets the function that is called for each text that fails. A failure is reported once: an outer
  // text that continues reports nothing, and when an interrupt or the memory limit ends several
  // nested texts, only the innermost reports it. Without a listener, errors are written to the
  // standard error stream. The listener may run texts itself.
  static void setErrorListener(void (*listener)(void* data, const ScmVMError& error), void* data);
  // Sets the function that is called with each text that ExecuteString is about to run.
  static void setTextListener(void (*listener)(void* data, const char* text), void* data);
  // Sets the function that is asked before that whether the text may run. A text that may not run
  // succeeds with an empty result. Null lets all texts run.
  static void setTextGate(bool (*mayRun)(void* data, const char* text), void* data);

  // The file (UTF-8) and the line of the top-level form that is being run, or an empty name and 0
  // when no file is being loaded.
  static void place(std::string& file, int& line);
  // The same with the column, from 1, of the form; 0 when that is unknown.
  static void place(std::string& file, int& line, int& column);

  // Stops the running text and those around it: Scheme code at once, even while it sleeps or reads;
  // a primitive first returns. Can be called from a signal handler. Does nothing when no text is
  // running.
  static void interrupt();
};

#endif  // PLATFORM_ENGINE_SCMVM_H_
