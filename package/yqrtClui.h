// Includes the whole library for a host, but for the line editor, see terminal/YcluiPrompt.h:
//   YcluiParser      a command line with all its state; a host passes text to it
//   YcluiPreview     what a text would do to a parser, without doing it
//   YcluiHelp        what is shown about words and their arguments
//   YcluiSyntaxGraph the syntax that a parser walks, built from nodes
//   YcluiLex         the words, aliases and variables of a parser
//   YErr             the errors that were recorded
//   YuiTextField     the base class of a host's text field
//   CluiLibrary...   the entry points for a script engine, and YcluiLibraryFile to find them
//   YcluiVersion     the version, and YQRTCLUI_VERSION

#ifndef YQRTCLUI_H_
#define YQRTCLUI_H_

#include "foundation/YEncoding.h"      // IWYU pragma: export
#include "foundation/YErr.h"           // IWYU pragma: export
#include "foundation/YcluiVersion.h"   // IWYU pragma: export
#include "lex/YcluiLex.h"              // IWYU pragma: export
#include "parser/YcluiHelp.h"          // IWYU pragma: export
#include "parser/YcluiParser.h"        // IWYU pragma: export
#include "parser/YcluiPreview.h"       // IWYU pragma: export
#include "platform/ui/YuiTextField.h"  // IWYU pragma: export
#include "script/YcluiLibrary.h"       // IWYU pragma: export
#include "script/ycscm.h"              // IWYU pragma: export
#include "syntax/YcluiSyntaxGraph.h"   // IWYU pragma: export

#endif  // YQRTCLUI_H_
