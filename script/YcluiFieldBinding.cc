// How a binding attaches to a field and a parser and passes text between them.

#include "script/YcluiFieldBinding.h"

#include <cstdio>
#include <utility>

#include "foundation/YStatus.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/YcluiFieldFormat.h"

constinit YLiveList<YcluiFieldBinding> YcluiFieldBinding::All;

// --- Attaching and detaching

YcluiFieldBinding* YcluiFieldBinding::Attach(YuiTextField* field, YcluiParser* parser,
                                             const char* echoFormat, const char* synFormat) {
  auto* binding = new YcluiFieldBinding(echoFormat, synFormat);
  if (binding == nullptr) return nullptr;
  if (field != nullptr) binding->attachField(*field);
  if (parser == nullptr) return binding;
  binding->attachParser(*parser);
  const Watch watch(*binding);
  binding->show();
  return watch.isGone() ? nullptr : binding;
}

YcluiFieldBinding::YcluiFieldBinding(const char* theEchoFormat, const char* theSynFormat)
    : echoFormat(theEchoFormat), synFormat(theSynFormat) {
  All.join(membership);
}

YcluiFieldBinding::~YcluiFieldBinding() {
  All.leave(membership);
  for (Watch* watch = watches; watch != nullptr; watch = watch->outer_) watch->binding_ = nullptr;
  if (field != nullptr) field->SetModificationCallBack(nullptr);
  if (parser != nullptr) releaseParser();
}

YcluiFieldBinding* YcluiFieldBinding::FindLive(const void* handle) {
  return All.find(handle);
}

void YcluiFieldBinding::attachField(YuiTextField& attached) {
  field = &attached;
  attached.SetModificationCallBack(this);
}

void YcluiFieldBinding::OnRelease(YuiTextField* released) {
  if (released == field) field = nullptr;
}

// A parser has at most one binding and does not notify the previous one.
void YcluiFieldBinding::attachParser(YcluiParser& attached) {
  const auto isOfParser = [&attached](const YcluiFieldBinding& other) {
    return other.parser == &attached;
  };
  if (YcluiFieldBinding* other = All.find(isOfParser)) other->parser = nullptr;
  parser = &attached;
  attached.sysSetEchoProcedure(
      [](void* data, const char* wholeLine) {
        static_cast<YcluiFieldBinding*>(data)->onEcho(wholeLine);
      },
      this);
  attached.sysSetSynCallback(
      [](void* data, const char* line, const char* wholeLine) {
        static_cast<YcluiFieldBinding*>(data)->onSyntax(line, wholeLine);
      },
      this);
  attached.sysSetGoneProcedure(
      [](void* data) { static_cast<YcluiFieldBinding*>(data)->parser = nullptr; }, this);
}

void YcluiFieldBinding::releaseParser() {
  parser->sysSetEchoProcedure(nullptr, nullptr);
  parser->sysSetSynCallback(nullptr, nullptr);
  parser->sysSetGoneProcedure(nullptr, nullptr);
}

// --- Between parser and field

void YcluiFieldBinding::onEcho(const char* wholeLine) {
  fieldText.assign(wholeLine);
  if (fieldText.length != 0) fieldText << ' ';
  wordStart_ = fieldText.length;
  show();
}

void YcluiFieldBinding::onSyntax(const char* line, const char* wholeLine) {
  if (synFormat.length == 0) return;
  YString escapedLine;
  YString escapedWhole;
  YcluiAppendEscaped(line, escapedLine);
  YcluiAppendEscaped(wholeLine, escapedWhole);
  Run(synFormat, escapedLine.buffer, escapedWhole.buffer);
}

// Setting the field may lead to a change of the copy, so a second copy is passed to it.
void YcluiFieldBinding::show() {
  const YString shown(fieldText);
  const Watch watch(*this);
  const bool before = std::exchange(selfEdit, true);
  ++shows;
  showText(shown.buffer);
  if (!watch.isGone()) selfEdit = before;
}

// The call may destroy the binding, so no member is used after it.
void YcluiFieldBinding::showText(const char* shown) {
  if (echoFormat.length != 0) {
    YString escaped;
    YcluiAppendEscaped(shown, escaped);
    Run(echoFormat, escaped.buffer);
  } else if (field != nullptr) {
    field->SetText(shown);
  } else {
    std::printf("CLUI \"%s\" >\n", shown);
  }
}

// When the parser does not echo the word (a comment, echo switched off, no syntax, no parser), the
// field lacks the blank that the copy has, so it is set here. An echo format is run for echoes
// only.
void YcluiFieldBinding::feedParser(const char* word) {
  const Watch watch(*this);
  const std::uint32_t before = shows;
  if (parser != nullptr && parser->isCondemned() == 0) parser->interpret(word);
  YcluiParser::CleanupMortuary();
  if (watch.isGone() || shows != before) return;
  if (field != nullptr && echoFormat.length == 0) show();
}

void YcluiFieldBinding::Run(const YString& format, const char* first, const char* second) {
  if (!YScmIsThere()) return;
  YString command;
  YcluiFillFormat(format.buffer, first, second, command);
  YStatus status{0};
  char printed[128];
  ScmVMExternal::ExecuteString(command.buffer, printed, sizeof printed, status);
}
