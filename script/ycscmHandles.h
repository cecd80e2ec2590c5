// The handles of scripts for syntax fragments and indefinite nodes. Internal to script/.
//
// A handle is a plain address, so a set of the existing fragments distinguishes a valid one from
// one that was consumed already and from other kinds of handles. A look-up has constant cost.

#ifndef SCRIPT_YCSCMHANDLES_H_
#define SCRIPT_YCSCMHANDLES_H_

#include <memory>

class YcluiSyntaxGraph;
class YcluiSyntaxNode;

// Adds the fragment to the existing ones and pushes its handle.
void ycscmPushFragment(std::unique_ptr<YcluiSyntaxGraph> fragment);

// Passes the fragment of that handle to the caller; the handle is not accepted again. Returns null,
// with YErrNotAlive, when there is none.
std::unique_ptr<YcluiSyntaxGraph> ycscmConsumeFragment(void* handle);

// Keeps an indefinite node that no parser owns until the end of the process, because its script may
// use the handle at any time.
void ycscmKeepNode(YcluiSyntaxNode* node);

#endif  // SCRIPT_YCSCMHANDLES_H_
