#include "platform/engine/ScmVM.h"

#include <dlfcn.h>
#include <gc/gc.h>
#include <pthread.h>

#include <cstdlib>
#include <cstring>
#include <set>
#include <string_view>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "platform/engine/YseEngine.h"

namespace yse {

Engine& TheEngine() {
  static Engine* const engine = new Engine;
  return *engine;
}

bool MayRun() {
  const Engine& engine = TheEngine();
  return engine.started && pthread_equal(engine.thread, pthread_self()) != 0;
}

bool ScriptRuns() {
  const Engine& engine = TheEngine();
  return MayRun() && engine.text != nullptr && engine.text->running && !engine.native;
}

namespace {

// Sets an environment variable while Guile starts, which reads its settings from there.
class Setting {
 public:
  Setting(const char* name, const char* value) : name_(name) {
    const char* const before = std::getenv(name);
    had_ = before != nullptr;
    if (had_) before_ = before;
    setenv(name, value, 1);
  }
  Setting(const Setting&) = delete;
  Setting& operator=(const Setting&) = delete;
  ~Setting() {
    if (had_) {
      setenv(name_, before_.c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

 private:
  const char* name_;
  bool had_ = false;
  std::string before_;
};

void StartGuile() {
  const Setting compile("GUILE_AUTO_COMPILE", "0");
  const Setting deprecated("GUILE_WARN_DEPRECATED", "no");
  const Setting locale("GUILE_INSTALL_LOCALE", "0");
  scm_init_guile();
  Engine* const engine = &TheEngine();
  GC_add_roots(engine, engine + 1);
}

SCM FromPrelude(const char* name) {
  return scm_variable_ref(scm_c_lookup(name));
}

void EvaluateAll(const char* forms) {
  const SCM port = scm_open_input_string(scm_from_utf8_string(forms));
  for (SCM form = scm_read(port); !SCM_EOF_OBJECT_P(form); form = scm_read(port)) {
    scm_primitive_eval(form);
  }
}

// Runs in the engine's own module.
void FillModule() {
  Engine& engine = TheEngine();
  scm_c_define("%user", engine.module);
  DefineGuards();
  DefineTexts();
  DefineCompiling();
  EvaluateAll(Prelude);
  EvaluateAll(CompilePrelude);
  engine.guarded = FromPrelude("guarded");
  engine.messageOf = FromPrelude("message-of");
  engine.written = FromPrelude("written");
  engine.loadScript = FromPrelude("load-script");
  engine.stackOverflow = FromPrelude("stack-overflow");
  engine.refuse = FromPrelude("refuse");
}

// A failure here is a fault of this code or of the installation; `error` says which.
SCM SetUp(void* error) {
  Engine& engine = TheEngine();
  engine.module = scm_c_resolve_module("guile-user");
  engine.quoteSymbol = scm_from_utf8_symbol("quote");
  engine.quoteVariable = scm_module_variable(engine.module, engine.quoteSymbol);
  engine.hashReaders = scm_c_public_ref("guile", "%read-hash-procedures");
  DefineHandles();
  OpenPorts();
  const SCM module = scm_c_define_module("yqrt engine", nullptr, nullptr);
  const SCM before = scm_set_current_module(module);
  StartMemoryLimit();
  StartStackLimits();
  if (!StartInterrupts()) {
    *static_cast<std::string*>(error) = "cannot create a pipe for interrupts";
    return SCM_BOOL_F;
  }
  FillModule();
  scm_set_current_module(before);
  return SCM_BOOL_T;
}

SCM SetUpFailed(void* error, SCM key, SCM args) {
  const SCM text = scm_object_to_string(scm_cons(key, args), SCM_UNDEFINED);
  ToUtf8(text, *static_cast<std::string*>(error));
  return SCM_BOOL_F;
}

struct Library {
  void* handle;
  void (*cleanup)();
};

std::vector<Library>& Libraries() {
  static auto* const libraries = new std::vector<Library>;
  return *libraries;
}

// The five entry points of a script library.
struct EntryPoints {
  const char* (*name)() = nullptr;
  const YScmProc* (*procs)() = nullptr;
  std::uint32_t (*count)() = nullptr;
  void (*initialize)() = nullptr;
  void (*cleanup)() = nullptr;
};

template <typename Function>
bool Find(void* library, const char* fileName, const char* name, Function& function,
          std::string& error) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function != nullptr) return true;
  error = std::string(fileName) + " has no " + name;
  return false;
}

bool FindEntryPoints(void* library, const char* fileName, EntryPoints& entry, std::string& error) {
  return Find(library, fileName, "CluiLibraryName", entry.name, error) &&
         Find(library, fileName, "CluiLibraryProcs", entry.procs, error) &&
         Find(library, fileName, "CluiLibraryNProcs", entry.count, error) &&
         Find(library, fileName, "CluiLibInitialize", entry.initialize, error) &&
         Find(library, fileName, "CluiLibCleanup", entry.cleanup, error);
}

bool CheckName(const EntryPoints& entry, const char* fileName, const char* libraryName,
               std::string& error) {
  const char* const name = entry.name();
  if (name != nullptr && std::strcmp(name, libraryName) == 0) return true;
  error = std::string(fileName) + " is the library \"" + (name != nullptr ? name : "") +
          "\", not \"" + libraryName + "\"";
  return false;
}

// Describes what is wrong with the row; null when nothing is.
const char* FaultOf(const YScmProc& row, std::set<std::string_view>& names) {
  if (row.name == nullptr || row.name[0] == '\0') return "no name";
  if (row.procedure == nullptr) return "no procedure";
  if (row.rest > 1) return "a rest that is neither 0 nor 1";
  if (!names.insert(row.name).second) return "a name that an earlier row has";
  return nullptr;
}

bool CheckTable(const EntryPoints& entry, const char* fileName, std::string& error) {
  const YScmProc* const rows = entry.procs();
  const std::uint32_t count = entry.count();
  if (rows == nullptr && count > 0) {
    error = std::string(fileName) + " has no table";
    return false;
  }
  if (count > RoomForRows()) {
    error = std::string(fileName) + " has more procedures than can be bound";
    return false;
  }
  std::set<std::string_view> names;
  for (std::uint32_t i = 0; i < count; ++i) {
    const char* const fault = FaultOf(rows[i], names);
    if (fault == nullptr) continue;
    error = std::string(fileName) + ": row " + std::to_string(i) + " of its table has " + fault;
    return false;
  }
  return true;
}

bool IsOpen(void* library) {
  for (const Library& open : Libraries()) {
    if (open.handle == library) return true;
  }
  return false;
}

void BindTable(const EntryPoints& entry) {
  const YScmProc* const rows = entry.procs();
  for (std::uint32_t i = 0; i < entry.count(); ++i) {
    Bind({rows[i].name, rows[i].procedure, rows[i].required, rows[i].rest});
  }
}

bool OpenHandle(void* library, const char* fileName, const char* libraryName, std::string& error) {
  EntryPoints entry;
  if (!FindEntryPoints(library, fileName, entry, error)) return false;
  if (!CheckName(entry, fileName, libraryName, error)) return false;
  if (IsOpen(library)) return true;
  if (!CheckTable(entry, fileName, error)) return false;
  entry.initialize();
  BindTable(entry);
  Libraries().push_back({library, entry.cleanup});
  return true;
}

}  // namespace

}  // namespace yse

using namespace yse;

YWord ScmVM::start(std::size_t memoryLimit, std::string& error) {
  Engine& engine = TheEngine();
  if (engine.started) {
    error = "the engine is already running";
    return 0;
  }
  if (!YCharacters::CanConvert()) {
    error = std::string("iconv does not support the encoding ") + YEncoding::Inside();
    return 0;
  }
  YEncoding::Fix();
  engine.thread = pthread_self();
  engine.memoryLimit = memoryLimit;
  StartGuile();
  if (scm_is_false(
          scm_c_catch(SCM_BOOL_T, &SetUp, &error, &SetUpFailed, &error, nullptr, nullptr))) {
    return 0;
  }
  engine.started = true;
  return 1;
}

YWord ScmVM::openLibrary(const char* fileName, const char* libraryName, std::string& error) {
  if (!MayRun()) {
    error = "the engine has not been started in this thread";
    return 0;
  }
  void* const library = dlopen(fileName, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    error = dlerror();
    return 0;
  }
  const char* const shown = fileName != nullptr ? fileName : "the program";
  if (OpenHandle(library, shown, libraryName, error)) return 1;
  dlclose(library);
  return 0;
}

void ScmVM::closeLibraries() {
  while (!Libraries().empty()) {
    const Library library = Libraries().back();
    Libraries().pop_back();
    library.cleanup();
  }
}

YWord ScmVM::loadFile(const char* fileName) {
  if (!MayRun()) return 0;
  Text text;
  text.file = fileName;
  RunGuarded(text);
  return text.ending == Text::Good ? 1 : 0;
}

void ScmVM::bindProcedure(const char* name, void (*procedure)(std::uint32_t, YStatus&),
                          std::uint32_t required, std::uint32_t rest) {
  if (MayRun()) Bind({name, procedure, required, rest});
}

void ScmVM::setErrorListener(void (*listener)(void*, const ScmVMError&), void* data) {
  TheEngine().errorListener = listener;
  TheEngine().errorData = data;
}

void ScmVM::setTextGate(bool (*mayRun)(void*, const char*), void* data) {
  TheEngine().textGate = mayRun;
  TheEngine().gateData = data;
}

void ScmVM::setTextListener(void (*listener)(void*, const char*), void* data) {
  TheEngine().textListener = listener;
  TheEngine().textData = data;
}

void ScmVM::place(std::string& file, int& line) {
  int column = 0;
  place(file, line, column);
}

void ScmVM::place(std::string& file, int& line, int& column) {
  const Engine& engine = TheEngine();
  file.clear();
  line = column = 0;
  if (engine.places.empty()) return;
  file = engine.places.back().file;
  line = engine.places.back().line;
  column = engine.places.back().column;
}
