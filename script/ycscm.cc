#include "script/ycscm.h"

#include <iterator>

#include "parser/YcluiParser.h"
#include "script/YcluiLibrary.h"
#include "script/ycscmPrimitives.h"

namespace {

const YScmProc Procs[] = {
    {"clui-token", ycscmToken, 1, 1},
    {"clui-syntax", ycscmSyntax, 1, 1},
    {"clui-oneof", ycscmOneof, 1, 1},
    {"clui-anyof", ycscmAnyof, 1, 1},
    {"clui-indefinite-syntax", ycscmIndefiniteSyntax, 3, 0},
    {"clui-priority", ycscmPriority, 1, 1},
    {"clui-parser-new", ycscmParserNew, 1, 0},
    {"clui-parser-delete", ycscmParserDelete, 1, 0},
    {"clui-reset", ycscmReset, 1, 0},
    {"clui-set-syntax", ycscmSetSyntax, 2, 0},
    {"clui-delete-last", ycscmDeleteLast, 1, 0},
    {"clui-eval", ycscmEval, 2, 0},
    {"clui-push", ycscmPush, 1, 0},
    {"clui-pop", ycscmPop, 1, 0},
    {"clui-depth", ycscmDepth, 1, 0},
    {"clui-attach-field", ycscmAttachField, 2, 1},
    {"clui-put-dummy-token", ycscmPutDummyToken, 2, 0},
    {"clui-start-logging", ycscmStartLogging, 2, 1},
    {"clui-shut-logging", ycscmShutLogging, 1, 0},
    {"clui-playback-from-file", ycscmPlaybackFromFile, 2, 0},
    {"clui-set-alias", ycscmSetAlias, 3, 0},
    {"clui-unset-alias", ycscmUnsetAlias, 2, 0},
    {"clui-set-variable", ycscmSetVariable, 3, 1},
    {"clui-set-keystroke-action", ycscmSetKeystrokeAction, 3, 0},
    {"clui-find-possible-token", ycscmFindPossibleToken, 1, 1},
    {"clui-refer-current-word", ycscmReferCurrentWord, 1, 0},
    {"clui-replace-current-word", ycscmReplaceCurrentWord, 1, 1},
    {"clui-complete-token", ycscmCompleteToken, 2, 0},
};

}  // namespace

const char* CluiLibraryName() {
  return YcluiLibraryName;
}

const YScmProc* CluiLibraryProcs() {
  return Procs;
}

std::uint32_t CluiLibraryNProcs() {
  return std::size(Procs);
}

void CluiLibInitialize() {
  YcluiParser::CreateMortuary();
}

void CluiLibCleanup() {
  YcluiParser::DestroyMortuary();
}
