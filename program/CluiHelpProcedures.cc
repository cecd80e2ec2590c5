#include "program/CluiHelpProcedures.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "foundation/YErr.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

using Scm = ScmVMExternal;

// Procedures are kept in a table of Scheme, where the collector finds them, by a key that is the
// data of the function that C++ calls. `argument-values` passes the key, or 0 for file names, and
// drops what was released; a key is not used again.
constexpr char Definitions[] = R"scheme(
(define %answer #f)
(define argument-values
  (let ((set-values argument-values)
        (table (make-hash-table))
        (last-key 0))
    (define (strings? thing)
      (and (list? thing) (and-map string? thing)))
    (define (drop-released!)
      (let ((key (%released-key)))
        (when key
          (hashv-remove! table key)
          (drop-released!))))
    (define (answer)
      (let* ((question (%question))
             (procedure (hashv-ref table (car question))))
        (catch #t
          (lambda ()
            (let ((values (with-output-to-port (%make-void-port "w")
                            (lambda () (procedure (cdr question))))))
              (if (strings? values) (%found values))))
          (lambda error #f))))
    (set! %answer answer)
    (lambda (parser id index values)
      (cond ((procedure? values)
             (set! last-key (1+ last-key))
             (set-values parser id index last-key)
             (hashv-set! table last-key values))
            ((eq? values 'files) (set-values parser id index 0))
            ((strings? values) (set-values parser id index values))
            (else
             (scm-error 'wrong-type-arg "argument-values"
                        "argument 4 must be a list of strings, a procedure or files, not ~S"
                        (list values) (list values))))
      (drop-released!)
      #t)))
)scheme";
constexpr char Ask[] = "(%answer)";

// The question that is being asked; a procedure may lead to another one.
struct Question {
  long key;
  const char* typed;
  YString_Array& values;
  Question* outer;
  int depth;
};
// Deeper questions give no values: a procedure that asks for its own would not end.
constexpr int MostNestedQuestions = 20;
Question* Asked = nullptr;

std::vector<long> ReleasedKeys;

long KeyOf(void* data) {
  return reinterpret_cast<long>(data);
}

void FindValues(void* data, const char* typed, YString_Array& values) {
  const int depth = Asked == nullptr ? 1 : Asked->depth + 1;
  if (depth > MostNestedQuestions) return;
  Question question{KeyOf(data), typed, values, Asked, depth};
  Asked = &question;
  YStatus status = {0};
  Scm::ExecuteString(Ask, nullptr, 0, status);
  Asked = question.outer;
}

void Release(void* data) {
  ReleasedKeys.push_back(KeyOf(data));
}

// --- Arguments, popped from the last one on

void Refuse(YArgNum position, YScmArgType expected, YStatus& status) {
  Scm::VMESetErrorArgNum(position, status);
  Scm::VMESetErrorBadType(expected, status, -1);
}

const char* PopString(YArgNum position, YStatus& status) {
  return YStatusIsGood(status) ? Scm::VMEAssertIsAString(position, status, -1) : nullptr;
}

long PopLong(YArgNum position, YStatus& status) {
  return YStatusIsGood(status) ? Scm::VMEAssertIsALong(position, status, -1) : 0;
}

double PopNumber(YArgNum position, YStatus& status) {
  if (!YStatusIsGood(status)) return 0;
  if (Scm::StackLongP() != 0) return static_cast<double>(Scm::StackPopLong(status));
  if (Scm::StackDoubleP() != 0) return Scm::StackPopDouble(status);
  Refuse(position, YScmArgDouble, status);
  return 0;
}

// The strings of the list on top. Clears the status at another element or an improper end.
void PopStrings(YArgNum position, YString_Array& strings, YStatus& status) {
  std::uint32_t count = 0;
  while (Scm::StackPairP() != 0 && ++count <= YcluiMostListElements) {
    Scm::StackDuplicate();
    Scm::StackCar();
    const char* text = Scm::VMEAssertIsAString(position, status, -1);
    if (!YStatusIsGood(status)) return;
    strings.end() = text;
    Scm::StackCdr();
  }
  if (Scm::StackNullP() == 0) return Refuse(position, YScmArgPair, status);
  Scm::StackPop(status);
}

int PopIndex(YStatus& status) {
  const long index = PopLong(3, status);
  const bool isThere = index >= 1 && index <= std::numeric_limits<int>::max();
  if (YStatusIsGood(status) && !isThere) Refuse(3, YScmArgLong, status);
  return static_cast<int>(index);
}

// The first two arguments of each procedure. Null, with a bad status, when one is invalid.
YcluiHelp* PopWord(std::uint32_t& id, YStatus& status) {
  id = static_cast<std::uint32_t>(PopLong(2, status) & YcluiIdMask);
  if (YStatusIsGood(status) && id == 0) Refuse(2, YScmArgLong, status);
  const long address = PopLong(1, status);
  if (!YStatusIsGood(status)) return nullptr;
  const YcluiParser* parser = YcluiParser::FindLive(address);
  if (parser != nullptr) return &parser->help();
  YErr.pushError(YErrNotAlive, YErrWarning);
  Refuse(1, YScmArgLong, status);
  return nullptr;
}

void PushText(const char* text) {
  text == nullptr ? Scm::StackPushBoolean(0) : Scm::StackPushString(text);
}

void PushStrings(const YString_Array& strings) {
  for (int i = 0; i < strings.size(); ++i) Scm::StackPushString(strings.at(i).buffer);
  Scm::StackPushNull();
  for (int i = 0; i < strings.size(); ++i) Scm::StackCons();
}

// --- The procedures

void WordHelp(std::uint32_t argc, YStatus& status) {
  if (Scm::VMECheckArgCount(argc, 2, 3, status) == 0) return;
  const char* text = argc == 3 ? PopString(3, status) : nullptr;
  std::uint32_t id = 0;
  YcluiHelp* help = PopWord(id, status);
  if (help == nullptr) return;
  if (argc == 2) return PushText(help->text(id));
  help->setText(id, text);
  Scm::StackPushBoolean(1);
}

void ArgumentHelp(std::uint32_t argc, YStatus& status) {
  if (argc != 3 && argc != 5 && argc != 7) return Scm::VMESetWrongNumArgs(argc, 3, 7, status);
  const double high = argc == 7 ? PopNumber(7, status) : 0;
  const double low = argc == 7 ? PopNumber(6, status) : 0;
  if (YStatusIsGood(status) && !(low <= high)) Refuse(6, YScmArgDouble, status);
  const char* text = argc > 3 ? PopString(5, status) : nullptr;
  const char* name = argc > 3 ? PopString(4, status) : nullptr;
  const int index = PopIndex(status);
  std::uint32_t id = 0;
  YcluiHelp* help = PopWord(id, status);
  if (help == nullptr) return;
  if (argc == 3) return PushText(help->argumentName(id, index));
  help->setArgument(id, index, name, text);
  argc == 7 ? help->setRange(id, index, low, high) : help->removeRange(id, index);
  Scm::StackPushBoolean(1);
}

// Values are a list of strings, or the key of a procedure, or 0 for file names.
void ArgumentValues(std::uint32_t, YStatus& status) {
  YString_Array values;
  const bool isList = Scm::StackLongP() == 0;
  const long key = isList ? 0 : PopLong(4, status);
  if (isList) PopStrings(4, values, status);
  const int index = PopIndex(status);
  std::uint32_t id = 0;
  YcluiHelp* help = PopWord(id, status);
  if (help == nullptr) return;
  if (key == 0) {
    help->setValues(id, index, values);
  } else {
    help->setValues(id, index, FindValues, reinterpret_cast<void*>(key), Release);
  }
  help->setFileName(id, index, !isList && key == 0);
  Scm::StackPushBoolean(1);
}

void MatchingValues(std::uint32_t, YStatus& status) {
  const char* typed = PopString(4, status);
  const int index = PopIndex(status);
  std::uint32_t id = 0;
  const YcluiHelp* help = PopWord(id, status);
  if (help == nullptr) return;
  YString_Array values;
  help->findValues(id, index, typed, values);
  PushStrings(values);
}

// --- For the definitions above; outside a question they refuse.

void AskedQuestion(std::uint32_t, YStatus& status) {
  if (Asked == nullptr) return YStatusClear(status);
  Scm::StackPushLong(Asked->key);
  Scm::StackPushString(Asked->typed);
  Scm::StackCons();
}

void Found(std::uint32_t, YStatus& status) {
  if (Asked == nullptr) return YStatusClear(status);
  YString_Array values;
  PopStrings(1, values, status);
  if (!YStatusIsGood(status)) return;
  Asked->values = values;
  Scm::StackPushBoolean(1);
}

void ReleasedKey(std::uint32_t, YStatus&) {
  if (ReleasedKeys.empty()) return Scm::StackPushBoolean(0);
  Scm::StackPushLong(ReleasedKeys.back());
  ReleasedKeys.pop_back();
}

constexpr struct {
  const char* name;
  void (*procedure)(std::uint32_t, YStatus&);
  std::uint32_t required;
  std::uint32_t rest;
} Procedures[] = {
    {"word-help", WordHelp, 2, 1},
    {"argument-help", ArgumentHelp, 3, 1},
    {"argument-values", ArgumentValues, 4, 0},
    {"matching-values", MatchingValues, 4, 0},
    {"%question", AskedQuestion, 0, 0},
    {"%found", Found, 1, 0},
    {"%released-key", ReleasedKey, 0, 0},
};

}  // namespace

bool CluiBindHelpProcedures() {
  for (const auto& entry : Procedures) {
    ScmVM::bindProcedure(entry.name, entry.procedure, entry.required, entry.rest);
  }
  YStatus status = {0};
  Scm::ExecuteString(Definitions, nullptr, 0, status);
  return YStatusIsGood(status);
}

bool CluiAsksForValues(const char* text) {
  return std::strcmp(text, Ask) == 0;
}
