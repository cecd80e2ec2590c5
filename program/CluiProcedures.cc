#include "program/CluiProcedures.h"

#include <cstdint>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

void PushValue(const YAttribValue* value) {
  YStatus status = {0};
  switch (value == nullptr ? YAttribNull : value->tag) {
    case YAttribLong:
      return ScmVMExternal::StackPushLong(value->GetLong());
    case YAttribDouble:
      return ScmVMExternal::StackPushDouble(value->GetDouble());
    case YAttribString:
      return ScmVMExternal::StackPushString(value->GetString());
    case YAttribPoint:
      ScmVMExternal::StackPushLong(value->GetPointX(status));
      ScmVMExternal::StackPushLong(value->GetPointY(status));
      ScmVMExternal::StackCons();
      return;
    default:
      return ScmVMExternal::StackPushBoolean(0);
  }
}

// Null when there is none.
const YcluiToken* WordOf(const YcluiParser& parser, long word) {
  const long count = static_cast<long>(parser.numberOfToken());
  if (word < 0) word += count;
  return word < 0 || word >= count ? nullptr : parser.tokenAt(static_cast<YWord>(word));
}

const YAttribValue* ArgumentOf(const YcluiToken& token, long argument) {
  // Argument 0 of a YcluiToken is its word.
  const bool isThere = argument >= 0 && argument < token.argc() - 1;
  return isThere ? token[static_cast<int>(argument) + 1] : nullptr;
}

// For an argument 1 that has been popped and is no live parser.
void RefuseParser(YStatus& status) {
  YErr.pushError(YErrNotAlive, YErrWarning);
  ScmVMExternal::VMESetErrorArgNum(1, status);
  ScmVMExternal::VMESetErrorBadType(YScmArgLong, status, -1);
}

// Argument 1 as a parser. Null, with a bad status, when it is not a live one.
const YcluiParser* PopParser(YStatus& status) {
  const long address = ScmVMExternal::VMEAssertIsALong(1, status, -1);
  if (!YStatusIsGood(status)) return nullptr;
  const YcluiParser* parser = YcluiParser::FindLive(address);
  if (parser == nullptr) RefuseParser(status);
  return parser;
}

// Replaces so many values on the stack by a list of them.
void MakeList(int count) {
  ScmVMExternal::StackPushNull();
  for (; count > 0; --count) ScmVMExternal::StackCons();
}

void PushIdAndName(std::uint32_t id, const char* name) {
  ScmVMExternal::StackPushLong(static_cast<long>(id));
  ScmVMExternal::StackPushString(name);
}

void Words(std::uint32_t, YStatus& status) {
  const YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  int count = 0;
  const YcluiLex* lex = parser->lex();
  for (YAssocSetItr i(*lex->words()); i.item != nullptr; ++i) {
    const auto& word = *static_cast<const YcluiKeyword*>(i.item);
    if (word.type() == YcluiTokenAlias) continue;
    PushIdAndName(word.id(), word.name());
    for (int k = 0; k < word.argCount(); ++k) ScmVMExternal::StackPushLong(word.argType(k));
    MakeList(2 + word.argCount());
    ++count;
  }
  MakeList(count);
}

void CommandWords(std::uint32_t, YStatus& status) {
  const YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  const int count = static_cast<int>(parser->numberOfToken());
  for (int i = 0; i < count; ++i) {
    const YcluiToken& token = *parser->tokenAt(static_cast<YWord>(i));
    PushIdAndName(token.id(), token.string() == nullptr ? "" : token.string());
    for (int k = 1; k < token.argc(); ++k) PushValue(token[k]);
    MakeList(1 + token.argc());
  }
  MakeList(count);
}

// The first element of the list on the stack, which is argument `position`; the list stays.
long LongOfList(YArgNum position, YStatus& status) {
  ScmVMExternal::StackDuplicate();
  ScmVMExternal::StackCar();
  return ScmVMExternal::VMEAssertIsALong(position, status, -1);
}

// The last argument, which is false by default, may be anything, so it stays on the stack.
void TokenArgument(std::uint32_t argc, YStatus& status) {
  if (ScmVMExternal::VMECheckArgCount(argc, 3, 4, status) == 0) return;
  if (argc == 3) ScmVMExternal::StackPushBoolean(0);
  for (int i = 0; i < 3; ++i) ScmVMExternal::StackCons();
  const YcluiParser* parser = YcluiParser::FindLive(LongOfList(1, status));
  if (!YStatusIsGood(status)) return;
  if (parser == nullptr) {
    ScmVMExternal::StackPop(status);
    return RefuseParser(status);
  }
  ScmVMExternal::StackCdr();
  const long word = LongOfList(2, status);
  if (!YStatusIsGood(status)) return;
  ScmVMExternal::StackCdr();
  const long argument = LongOfList(3, status);
  if (!YStatusIsGood(status)) return;
  ScmVMExternal::StackCdr();
  if (const YcluiToken* token = WordOf(*parser, word)) PushValue(ArgumentOf(*token, argument));
}

// Defined in the module itself, as the help procedures are.
constexpr char Keep[] = R"scheme(
(define %kept-bindings '())
(set! %kept-bindings
  (let ((kept '()))
    (module-for-each
      (lambda (name variable)
        (if (variable-bound? variable)
            (set! kept (cons (list name variable (variable-ref variable)) kept))))
      (current-module))
    kept)))scheme";

constexpr char Restore[] = R"scheme(
(let ((kept %kept-bindings) (module (current-module)) (added '()))
  (define known (make-hash-table))
  (for-each (lambda (entry) (hashq-set! known (car entry) #t)) kept)
  (module-for-each
    (lambda (name variable) (if (not (hashq-ref known name)) (set! added (cons name added))))
    module)
  (for-each (lambda (name) (module-remove! module name)) added)
  (for-each
    (lambda (entry)
      (module-add! module (car entry) (cadr entry))
      (variable-set! (cadr entry) (caddr entry)))
    kept)))scheme";

bool Execute(const char* text) {
  YStatus status = {0};
  ScmVMExternal::ExecuteString(text, nullptr, 0, status);
  return YStatusIsGood(status);
}

}  // namespace

bool CluiKeepBindings() {
  return Execute(Keep);
}

void CluiRestoreBindings() {
  Execute(Restore);
}

void CluiBindProcedures() {
  ScmVM::bindProcedure("token-argument", TokenArgument, 3, 1);
  ScmVM::bindProcedure("clui-words", Words, 1, 0);
  ScmVM::bindProcedure("command-words", CommandWords, 1, 0);
}
