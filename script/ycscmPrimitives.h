// The functions in the table of primitives. Internal to script/.

#ifndef SCRIPT_YCSCMPRIMITIVES_H_
#define SCRIPT_YCSCMPRIMITIVES_H_

#include <cstdint>

#include "foundation/YStatus.h"

// Syntax fragments.
void ycscmSyntax(std::uint32_t argc, YStatus& status);
void ycscmOneof(std::uint32_t argc, YStatus& status);
void ycscmAnyof(std::uint32_t argc, YStatus& status);
void ycscmPriority(std::uint32_t argc, YStatus& status);

// Words and indefinite syntax.
void ycscmToken(std::uint32_t argc, YStatus& status);
void ycscmIndefiniteSyntax(std::uint32_t argc, YStatus& status);

// Parser control.
void ycscmParserNew(std::uint32_t argc, YStatus& status);
void ycscmParserDelete(std::uint32_t argc, YStatus& status);
void ycscmReset(std::uint32_t argc, YStatus& status);
void ycscmSetSyntax(std::uint32_t argc, YStatus& status);
void ycscmDeleteLast(std::uint32_t argc, YStatus& status);
void ycscmEval(std::uint32_t argc, YStatus& status);
void ycscmPush(std::uint32_t argc, YStatus& status);
void ycscmPop(std::uint32_t argc, YStatus& status);
void ycscmDepth(std::uint32_t argc, YStatus& status);
void ycscmPutDummyToken(std::uint32_t argc, YStatus& status);

// Aliases and variables.
void ycscmSetAlias(std::uint32_t argc, YStatus& status);
void ycscmUnsetAlias(std::uint32_t argc, YStatus& status);
void ycscmSetVariable(std::uint32_t argc, YStatus& status);

// Log and playback.
void ycscmStartLogging(std::uint32_t argc, YStatus& status);
void ycscmShutLogging(std::uint32_t argc, YStatus& status);
void ycscmPlaybackFromFile(std::uint32_t argc, YStatus& status);

// Completion.
void ycscmFindPossibleToken(std::uint32_t argc, YStatus& status);
void ycscmCompleteToken(std::uint32_t argc, YStatus& status);

// Field binding.
void ycscmAttachField(std::uint32_t argc, YStatus& status);
void ycscmSetKeystrokeAction(std::uint32_t argc, YStatus& status);
void ycscmReferCurrentWord(std::uint32_t argc, YStatus& status);
void ycscmReplaceCurrentWord(std::uint32_t argc, YStatus& status);

#endif  // SCRIPT_YCSCMPRIMITIVES_H_
