// All of the library for a host, in one include:
//   YcluiParser      a command line with all its state: text goes in here
//   YcluiSyntaxGraph the syntax that a parser walks, built of nodes or by scripts
//   YcluiLex         words, aliases and variables of a parser
//   YErr             the errors that were recorded
//   YuiTextField     what a text field of the host derives from
//   CluiLibrary...   the entry points for a script engine

#ifndef YQRTCLUI_H_
#define YQRTCLUI_H_

#include "foundation/YErr.h"           // IWYU pragma: export
#include "lex/YcluiLex.h"              // IWYU pragma: export
#include "parser/YcluiParser.h"        // IWYU pragma: export
#include "platform/ui/YuiTextField.h"  // IWYU pragma: export
#include "script/ycscm.h"              // IWYU pragma: export
#include "syntax/YcluiSyntaxGraph.h"   // IWYU pragma: export

#endif  // YQRTCLUI_H_
