#include "workshop/CluiGrammarRecorder.h"

#include <algorithm>
#include <utility>

#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "workshop/CluiRecording.h"

namespace {

CluiGrammarRecorder* Recorder = nullptr;

// An argument or the result of a recorded call.
struct Value {
  enum class Kind { Number, Character, Text, Handle, List, Other };
  Kind kind = Kind::Other;
  long number = 0;  // or the code of the character
  std::string text;
  const void* handle = nullptr;
  std::vector<Value> list;
};

// Pops the top of the stack.
Value PopValue(YStatus& status);

// Pops a list; its first values may be improper ones.
void PopList(std::vector<Value>& values, YStatus& status) {
  while (ScmVMExternal::StackPairP() != 0) {
    ScmVMExternal::StackDuplicate();
    ScmVMExternal::StackCar();
    values.push_back(PopValue(status));
    ScmVMExternal::StackCdr();
  }
  ScmVMExternal::StackPop(status);
}

Value PopValue(YStatus& status) {
  Value value;
  if (ScmVMExternal::StackLongP() != 0 || ScmVMExternal::StackSmallLongP() != 0) {
    value.kind = Value::Kind::Number;
    value.number = ScmVMExternal::StackPopLong(status);
  } else if (ScmVMExternal::StackCharP() != 0) {
    value.kind = Value::Kind::Character;
    value.number = ScmVMExternal::StackPopChar(status);
  } else if (ScmVMExternal::StackStringP() != 0) {
    value.kind = Value::Kind::Text;
    const char* const text = ScmVMExternal::StackPopString(status);
    if (text != nullptr) value.text = text;
  } else if (ScmVMExternal::StackHandleP() != 0) {
    value.kind = Value::Kind::Handle;
    value.handle = ScmVMExternal::StackPopHandle(status);
  } else if (ScmVMExternal::StackPairP() != 0) {
    value.kind = Value::Kind::List;
    PopList(value.list, status);
  } else {
    ScmVMExternal::StackPop(status);
  }
  return value;
}

// A place is a list (file line column), the empty list when it is unknown.
CluiScriptPlace PlaceOf(const std::vector<Value>& list, std::size_t from) {
  if (list.size() < from + 3) return {};
  return {list[from].text, static_cast<int>(list[from + 1].number),
          static_cast<int>(list[from + 2].number)};
}

CluiScriptPlace CurrentForm() {
  CluiScriptPlace form;
  ScmVM::place(form.file, form.line, form.column);
  return form;
}

// Words and code have the place of the call around them, and so have priorities that clui-priority
// did not create.
void PlaceParts(CluiFragment& fragment) {
  for (CluiFragment& part : fragment.parts) {
    if (part.place.line == 0) part.place = fragment.place;
    if (part.form.line == 0) part.form = fragment.form;
    PlaceParts(part);
  }
}

// Calls `visit` with the fragment and all fragments in it that a call created.
template <class Visit>
void EachCall(CluiFragment& fragment, const Visit& visit) {
  if (fragment.kind < CluiFragment::Kind::Sequence) return;
  visit(fragment);
  for (CluiFragment& part : fragment.parts) EachCall(part, visit);
}

}  // namespace

struct CluiGrammarRecorder::Call {
  std::string name;
  CluiScriptPlace place;
  CluiScriptPlace form;
  Value result;
  std::vector<Value> arguments;
};

CluiGrammarRecorder::~CluiGrammarRecorder() {
  if (Recorder == this) Recorder = nullptr;
}

bool CluiGrammarRecorder::start() {
  Recorder = this;
  records_ = true;
  ScmVM::bindProcedure("workshop-note", Note, 3, 1);
  ScmVM::bindProcedure("workshop-mention", Mention, 2, 0);
  YStatus status = {0};
  char result[64];
  ScmVMExternal::ExecuteString(CluiRecording, result, sizeof result, status);
  return YStatusIsGood(status);
}

// --- What the script does

void CluiGrammarRecorder::Note(std::uint32_t count, YStatus& status) {
  YStatusSetGood(status);
  std::vector<Value> values(count);
  for (std::size_t i = count; i > 0; --i) values[i - 1] = PopValue(status);
  YStatusSetGood(status);
  if (Recorder == nullptr || !Recorder->records_) return;
  Call call;
  call.name = values[0].text;
  call.place = PlaceOf(values[1].list, 0);
  call.form = CurrentForm();
  if (call.place.line == 0) call.place = call.form;
  call.result = std::move(values[2]);
  call.arguments.assign(std::make_move_iterator(values.begin() + 3),
                        std::make_move_iterator(values.end()));
  Recorder->note(call);
}

// A call that is a top-level form runs once; any other one may run again, when a command runs.
void CluiGrammarRecorder::Mention(std::uint32_t, YStatus& status) {
  YStatusSetGood(status);
  const CluiScriptPlace place = PlaceOf(PopValue(status).list, 0);
  const std::string name = PopValue(status).text;
  YStatusSetGood(status);
  if (Recorder == nullptr) return;
  const bool runsOnce = place.line != 0 && place == CurrentForm();
  if (name == "clui-put-dummy-token") Recorder->mayPutDummies_ = true;
  if (name == "clui-set-syntax" && !runsOnce) Recorder->maySetSyntax_ = true;
}

void CluiGrammarRecorder::note(Call& call) {
  if (call.name == "clui-parser-new") {
    grammars_[call.result.number] = std::make_unique<CluiGrammar>();
  } else if (call.name == "clui-token") {
    noteWord(call);
  } else if (call.name == "clui-syntax") {
    noteFragment(call, CluiFragment::Kind::Sequence);
  } else if (call.name == "clui-oneof") {
    noteFragment(call, CluiFragment::Kind::Choice);
  } else if (call.name == "clui-anyof") {
    noteFragment(call, CluiFragment::Kind::Repetition);
  } else if (call.name == "clui-set-syntax") {
    noteSyntax(call);
  } else if (call.name == "clui-indefinite-syntax") {
    noteAnywhere(call);
  } else if (call.name == "clui-set-keystroke-action") {
    keyFormats_.push_back({call.arguments[2].text, call.place});
  }
}

CluiGrammar* CluiGrammarRecorder::grammarFor(const Call& call) {
  const auto found = grammars_.find(call.arguments[0].number);
  return found == grammars_.end() ? nullptr : found->second.get();
}

// The arguments are the parser, an id if the word is not second, the word, and then either an
// abbreviation or the types of arguments.
void CluiGrammarRecorder::noteWord(const Call& call) {
  CluiGrammar* const grammar = grammarFor(call);
  if (grammar == nullptr) return;
  CluiWord word;
  word.id = static_cast<std::uint32_t>(call.result.number);
  word.place = call.place;
  word.form = call.form;
  std::size_t at = call.arguments[1].kind == Value::Kind::Number ? 2 : 1;
  if (at >= call.arguments.size()) return;
  const Value& name = call.arguments[at++];
  word.isCharacter = name.kind == Value::Kind::Character;
  word.name = word.isCharacter ? std::string(1, static_cast<char>(name.number)) : name.text;
  for (; at < call.arguments.size() && !word.isCharacter; ++at) {
    const Value& more = call.arguments[at];
    if (more.kind == Value::Kind::Text) word.abbreviation = more.text;
    if (more.kind == Value::Kind::Number) word.types.push_back(static_cast<int>(more.number));
  }
  if (!word.types.empty()) word.abbreviation.clear();
  (word.id == 0 ? grammar->refusedWords : grammar->words).push_back(std::move(word));
}

// A primitive that fails may destroy fragments that it was given, and another one may then get the
// same address. What is stored for the address is replaced then, and until then no call that
// succeeds can have it as an argument.
void CluiGrammarRecorder::noteFragment(const Call& call, CluiFragment::Kind kind) {
  Built built;
  CluiFragment& fragment = built.fragment;
  fragment.kind = kind;
  fragment.place = call.place;
  fragment.form = call.form;
  for (const Value& argument : call.arguments) {
    CluiFragment part;
    switch (argument.kind) {
      case Value::Kind::Number:
        part.kind = CluiFragment::Kind::Word;
        part.tokenId = static_cast<std::uint32_t>(argument.number);
        break;
      case Value::Kind::Text:
        part.kind = CluiFragment::Kind::Code;
        part.code = argument.text;
        break;
      case Value::Kind::List: {
        part.kind = CluiFragment::Kind::Priority;
        part.priority = static_cast<int>(argument.list[0].number & 0xFF);
        part.limit = static_cast<int>(argument.list[1].number & 0xFF);
        part.place = PlaceOf(argument.list, 2);
        break;
      }
      default:
        Built inner = take(argument.handle);
        part = std::move(inner.fragment);
        built.depth = std::max(built.depth, inner.depth + 1);
    }
    fragment.parts.push_back(std::move(part));
  }
  if (built.depth > MostDepth) {
    fragment.parts.clear();
    built.depth = 0;
  }
  fragments_[call.result.handle] = std::move(built);
}

CluiGrammarRecorder::Built CluiGrammarRecorder::take(const void* handle) {
  auto node = fragments_.extract(handle);
  return node.empty() ? Built() : std::move(node.mapped());
}

void CluiGrammarRecorder::noteSyntax(const Call& call) {
  CluiFragment syntax = take(call.result.handle).fragment;
  CluiGrammar* const grammar = grammarFor(call);
  if (grammar == nullptr) return;
  if (!grammar->syntax.parts.empty()) {
    grammar->formerSyntaxes.push_back(std::move(grammar->syntax));
  }
  grammar->syntax = std::move(syntax);
  grammar->anywhere.clear();
}

void CluiGrammarRecorder::noteAnywhere(const Call& call) {
  CluiGrammar* const grammar = grammarFor(call);
  if (grammar == nullptr || grammar->syntax.parts.empty()) return;
  grammar->anywhere.push_back({static_cast<std::uint32_t>(call.arguments[1].number),
                               call.arguments[2].text, call.place, call.form});
}

// --- What was recorded

void CluiGrammarRecorder::end() {
  if (!records_) return;
  records_ = false;
  std::map<std::pair<CluiScriptPlace, CluiScriptPlace>, int> calls;
  std::map<CluiScriptPlace, int> callsAtPlace;
  const auto count = [&](const auto& call) {
    ++calls[{call.place, call.form}];
    ++callsAtPlace[call.place];
  };
  const auto settle = [&](auto& call) {
    const bool isShared = callsAtPlace[call.place] > 1;
    if (isShared && calls[{call.place, call.form}] == 1) call.place = call.form;
  };
  eachCall(count);
  eachCall(settle);
  for (auto& [number, grammar] : grammars_) {
    PlaceParts(grammar->syntax);
    for (CluiFragment& syntax : grammar->formerSyntaxes) PlaceParts(syntax);
  }
}

template <class Visit>
void CluiGrammarRecorder::eachCall(const Visit& visit) {
  for (auto& [number, grammar] : grammars_) {
    for (CluiWord& word : grammar->words) visit(word);
    for (CluiWord& word : grammar->refusedWords) visit(word);
    for (CluiAnywhereWord& word : grammar->anywhere) visit(word);
    EachCall(grammar->syntax, visit);
    for (CluiFragment& syntax : grammar->formerSyntaxes) EachCall(syntax, visit);
  }
  for (auto& [handle, built] : fragments_) EachCall(built.fragment, visit);
}

const CluiGrammar* CluiGrammarRecorder::grammarOf(const YcluiParser& parser) const {
  const auto found = grammars_.find(reinterpret_cast<long>(&parser));
  return found == grammars_.end() ? nullptr : found->second.get();
}

std::vector<const CluiFragment*> CluiGrammarRecorder::unusedFragments() const {
  std::vector<const CluiFragment*> unused;
  for (const auto& [handle, built] : fragments_) unused.push_back(&built.fragment);
  return unused;
}
