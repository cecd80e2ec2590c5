// What scripts hold as handles: syntax fragments and indefinite nodes. Internal to script/.
//
// A handle is an address without a finaliser, so only the list of live fragments tells one that may
// be used from one that was consumed already and from every other kind of handle. A look-up costs
// the same however many there are.

#ifndef SCRIPT_YCSCMHANDLES_H_
#define SCRIPT_YCSCMHANDLES_H_

#include <memory>

class YcluiSyntaxGraph;
class YcluiSyntaxNode;

// Makes the fragment live and pushes its handle.
void ycscmPushFragment(std::unique_ptr<YcluiSyntaxGraph> fragment);

// Takes the live fragment of that handle for the caller, who uses it up: the handle will not be
// accepted again. Null, with YErrNotAlive, when there is none.
std::unique_ptr<YcluiSyntaxGraph> ycscmTakeFragment(void* handle);

// Keeps an indefinite node that no parser has taken, for as long as the process lives: its script
// may hold the handle for ever.
void ycscmKeepNode(YcluiSyntaxNode* node);

#endif  // SCRIPT_YCSCMHANDLES_H_
