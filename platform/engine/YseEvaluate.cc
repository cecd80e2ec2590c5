// Evaluating expressions, and the C++ functions that the prelude calls while it loads files.

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YFileName.h"
#include "platform/engine/YseEngine.h"

namespace yse {

int FromZeroBased(SCM number) {
  return scm_is_signed_integer(number, 0, INT32_MAX - 1) ? scm_to_int(number) + 1 : 0;
}

namespace {

// Calls with more arguments are evaluated by Guile.
constexpr int MostConstants = 64;

// The functions of this file are called from Scheme and may raise.

SCM BoundValue(SCM module, SCM symbol) {
  const SCM variable = scm_module_variable(module, symbol);
  if (scm_is_false(variable) || scm_is_false(scm_variable_bound_p(variable))) return SCM_UNDEFINED;
  return scm_variable_ref(variable);
}

bool EvaluatesToItself(SCM value) {
  return SCM_I_INUMP(value) || scm_is_string(value) || SCM_CHARP(value) || scm_is_bool(value) ||
         scm_is_number(value);
}

// Whether the value is (quote datum) and `quote` has not been redefined.
bool IsQuotation(SCM module, SCM value, SCM& datum) {
  const Engine& engine = TheEngine();
  if (!scm_is_pair(value) || !scm_is_eq(SCM_CAR(value), engine.quoteSymbol)) return false;
  const SCM rest = SCM_CDR(value);
  if (!scm_is_pair(rest) || !scm_is_null(SCM_CDR(rest))) return false;
  if (!scm_is_eq(scm_module_variable(module, engine.quoteSymbol), engine.quoteVariable))
    return false;
  datum = SCM_CAR(rest);
  return true;
}

// Collects the values of the arguments; false when not all of them are constants.
bool ConstantArguments(SCM module, SCM expressions, SCM& values) {
  SCM reversed = SCM_EOL;
  for (int count = 0; scm_is_pair(expressions); expressions = SCM_CDR(expressions)) {
    SCM value = SCM_CAR(expressions);
    if (++count > MostConstants) return false;
    if (!EvaluatesToItself(value) && !IsQuotation(module, value, value)) return false;
    reversed = scm_cons(value, reversed);
  }
  if (!scm_is_null(expressions)) return false;
  values = scm_reverse_x(reversed, SCM_EOL);
  return true;
}

std::string LocaleName(SCM name) {
  std::string utf8;
  ToUtf8(name, utf8);
  return YFileName::FromUtf8(utf8);
}

bool ReadAll(const char* name, std::string& content) {
  std::FILE* const file = std::fopen(name, "rb");
  if (file == nullptr) return false;
  char block[16384];
  std::size_t length = 0;
  while ((length = std::fread(block, 1, sizeof block, file)) > 0) content.append(block, length);
  const int error = std::ferror(file) != 0 ? errno : 0;
  std::fclose(file);
  errno = error;
  return error == 0;
}

// Reads a script into the engine's `characters`. Returns 0, or errno, or -1 with the number of the
// first line that is not UTF-8.
int ReadScript(SCM name, long& badLine) {
  Engine& engine = TheEngine();
  std::string content;
  if (!ReadAll(LocaleName(name).c_str(), content)) return errno;
  engine.characters.clear();
  std::string_view text = content;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t read = YCharacters::AppendFromUtf8(text, engine.characters);
  if (read == text.size()) return 0;
  badLine = 1;
  for (const char c : text.substr(0, read)) badLine += c == '\n' ? 1 : 0;
  return -1;
}

SCM ReadFile(SCM name) {
  long badLine = 0;
  const int error = ReadScript(name, badLine);
  if (error > 0) {
    scm_error(scm_from_utf8_symbol("system-error"), nullptr, "cannot read ~A: ~A",
              scm_list_2(name, scm_from_utf8_string(std::strerror(error))), SCM_BOOL_F);
  }
  if (error < 0) {
    scm_error(scm_from_utf8_symbol("decoding-error"), nullptr, "~A is no UTF-8 in line ~A",
              scm_list_2(name, scm_from_long(badLine)), SCM_BOOL_F);
  }
  const std::u32string& characters = TheEngine().characters;
  return scm_from_utf32_stringn(reinterpret_cast<const scm_t_wchar*>(characters.data()),
                                characters.size());
}

SCM PushPlace(SCM file) {
  TheEngine().places.emplace_back();
  ToUtf8(file, TheEngine().places.back().file);
  return SCM_UNSPECIFIED;
}

SCM PopPlace() {
  TheEngine().places.pop_back();
  return SCM_UNSPECIFIED;
}

SCM SetPlace(SCM line, SCM column) {
  Place& place = TheEngine().places.back();
  place.line = FromZeroBased(line);
  place.column = FromZeroBased(column);
  return SCM_UNSPECIFIED;
}

SCM IsLoading() {
  const Engine& engine = TheEngine();
  return scm_from_bool(engine.places.size() > engine.text->firstPlace);
}

SCM NoteFailure(SCM exception) {
  Engine& engine = TheEngine();
  if (scm_is_false(IsLoading())) return SCM_UNSPECIFIED;
  engine.failure = exception;
  engine.failurePlace = engine.places.back();
  return SCM_UNSPECIFIED;
}

// The file in which this text failed, or #f.
SCM PlaceFile() {
  const std::string& file = TheEngine().text->error.file;
  return file.empty() ? SCM_BOOL_F : FromUtf8(file);
}

SCM SetErrorPlace(SCM file, SCM line, SCM column) {
  if (!scm_is_string(file)) return SCM_UNSPECIFIED;
  ScmVMError& error = TheEngine().text->error;
  ToUtf8(file, error.file);
  error.line = FromZeroBased(line);
  error.column = FromZeroBased(column);
  return SCM_UNSPECIFIED;
}

}  // namespace

namespace {

SCM EvaluateForm(SCM form) {
  if (scm_is_pair(form) && scm_is_symbol(SCM_CAR(form))) {
    const SCM module = scm_current_module();
    const SCM procedure = BoundValue(module, SCM_CAR(form));
    SCM values = SCM_EOL;
    if (!SCM_UNBNDP(procedure) && scm_is_true(scm_procedure_p(procedure)) &&
        ConstantArguments(module, SCM_CDR(form), values)) {
      return scm_apply_0(procedure, values);
    }
  }
  return scm_primitive_eval(form);
}

}  // namespace

// StopIfAsked follows, because a system call that an interrupt cuts short can end the form without
// an error.
SCM Evaluate(SCM form) {
  // Ends a file that loads itself while there is still enough stack for its dynamic-wind
  // procedures.
  if (StackIsShort()) RaiseStackOverflow();
  const SCM value = EvaluateForm(form);
  StopIfAsked();
  return value;
}

void DefineTexts() {
  scm_c_define_gsubr("%evaluate", 1, 0, 0, reinterpret_cast<void*>(&Evaluate));
  scm_c_define_gsubr("%read-file", 1, 0, 0, reinterpret_cast<void*>(&ReadFile));
  scm_c_define_gsubr("%push-place", 1, 0, 0, reinterpret_cast<void*>(&PushPlace));
  scm_c_define_gsubr("%pop-place", 0, 0, 0, reinterpret_cast<void*>(&PopPlace));
  scm_c_define_gsubr("%set-place", 2, 0, 0, reinterpret_cast<void*>(&SetPlace));
  scm_c_define_gsubr("%loading?", 0, 0, 0, reinterpret_cast<void*>(&IsLoading));
  scm_c_define_gsubr("%note-failure", 1, 0, 0, reinterpret_cast<void*>(&NoteFailure));
  scm_c_define_gsubr("%place-file", 0, 0, 0, reinterpret_cast<void*>(&PlaceFile));
  scm_c_define_gsubr("%set-error-place", 3, 0, 0, reinterpret_cast<void*>(&SetErrorPlace));
}

}  // namespace yse
