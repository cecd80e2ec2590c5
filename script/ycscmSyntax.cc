// The primitives that build syntax fragments.
//
// A primitive pops its arguments from the last to the first and insertAnd inserts at the front, so
// a sequence keeps the order of the arguments. A string is the action of the token before it, which
// is popped next.

#include <memory>
#include <new>
#include <utility>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/ycscmArguments.h"
#include "script/ycscmHandles.h"
#include "script/ycscmPrimitives.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "syntax/YcluiSyntaxNode.h"

namespace {

using Graph = std::unique_ptr<YcluiSyntaxGraph>;

// Builds a fragment from popped arguments. The builder owns it until release().
class FragmentBuilder {
 public:
  enum class Kind { Sequence, Choice };

  explicit FragmentBuilder(Kind kind)
      : kind_(kind), graph_(YChecked(new (std::nothrow) YcluiSyntaxGraph)) {}

  // Pops and adds the argument on top of the stack if it is a token id, a string or a fragment;
  // returns whether it is one of them. Clears bit 0 when it is invalid.
  bool pop(YArgNum position, YStatus& status);

  YcluiSyntaxGraph& graph() { return *graph_; }
  Graph release() { return std::move(graph_); }

 private:
  Kind kind_;
  Graph graph_;
  const char* action_ = nullptr;  // popped before the token that it belongs to

  void popToken(YArgNum position, YStatus& status);
  void popFragment(YArgNum position, YStatus& status);

  template <class Part>
  void insert(Part* part) {
    if (kind_ == Kind::Sequence) {
      graph_->insertAnd(part);
    } else {
      graph_->insertOr(part);
    }
  }
};

bool FragmentBuilder::pop(YArgNum position, YStatus& status) {
  if (ScmVMExternal::StackLongP() != 0 || ScmVMExternal::StackSmallLongP() != 0) {
    popToken(position, status);
    return true;
  }
  if (ScmVMExternal::StackStringP() != 0) {
    action_ = ScmVMExternal::StackPopString(status);
    return true;
  }
  if (ScmVMExternal::StackHandleP() != 0) {
    popFragment(position, status);
    return true;
  }
  return false;
}

void FragmentBuilder::popToken(YArgNum position, YStatus& status) {
  const std::uint32_t id = ycscmPopTokenId(position, status);
  if (!YStatusIsGood(status)) return;
  insert(YChecked(new (std::nothrow) YcluiSyntaxNode(id, action_)));
  action_ = nullptr;
}

void FragmentBuilder::popFragment(YArgNum position, YStatus& status) {
  void* handle = ScmVMExternal::StackPopHandle(status);
  if (!YStatusIsGood(status)) return;
  const Graph part = ycscmConsumeFragment(handle);
  if (part == nullptr) {
    ycscmRefuse(position, YScmArgSyntaxElement, status);
    return;
  }
  insert(part.get());
}

// Pops a priority pair and sets both priorities of the nodes that follow the start. Clears bit 0
// when the pair does not consist of two longs.
void popPriority(YcluiSyntaxGraph& graph, YStatus& status) {
  ScmVMExternal::StackDuplicate();
  ScmVMExternal::StackCar();
  const long priority = ScmVMExternal::StackPopLong(status);
  if (!YStatusIsGood(status)) return;
  ScmVMExternal::StackCdr();
  const long interruptLimit = ScmVMExternal::StackPopLong(status);
  if (!YStatusIsGood(status)) return;
  graph.setPriority(static_cast<unsigned char>(priority),
                    static_cast<unsigned char>(interruptLimit));
}

// A primitive that failed pushes a null handle, and the fragment is freed.
void pushResult(Graph graph, const YStatus& status) {
  if (YStatusIsGood(status)) {
    ycscmPushFragment(std::move(graph));
  } else {
    ScmVMExternal::StackPushHandle(nullptr, nullptr, nullptr);
  }
}

Graph buildChoice(std::uint32_t argc, YStatus& status) {
  YStatusSetGood(status);
  FragmentBuilder builder(FragmentBuilder::Kind::Choice);
  for (std::uint32_t position = argc; position > 0 && YStatusIsGood(status); --position) {
    if (builder.pop(static_cast<YArgNum>(position), status)) continue;
    cluiWarning(YErrBadSyntaxArgument);
    ScmVMExternal::StackPop(status);
    YStatusClear(status);
  }
  return builder.release();
}

}  // namespace

void ycscmSyntax(std::uint32_t argc, YStatus& status) {
  YStatusSetGood(status);
  FragmentBuilder builder(FragmentBuilder::Kind::Sequence);
  for (std::uint32_t position = argc; position > 0 && YStatusIsGood(status); --position) {
    if (builder.pop(static_cast<YArgNum>(position), status)) continue;
    if (ScmVMExternal::StackPairP() != 0) {
      popPriority(builder.graph(), status);
      if (!YStatusIsGood(status)) return;
      continue;
    }
    ycscmRefuse(static_cast<YArgNum>(position), YScmArgSyntaxElement, status);
    cluiWarning(YErrBadSyntaxArgument);
    ScmVMExternal::StackPop(status);
  }
  pushResult(builder.release(), status);
}

void ycscmOneof(std::uint32_t argc, YStatus& status) {
  pushResult(buildChoice(argc, status), status);
}

void ycscmAnyof(std::uint32_t argc, YStatus& status) {
  Graph choice = buildChoice(argc, status);
  choice->makeClosure();
  pushResult(std::move(choice), status);
}

void ycscmPriority(std::uint32_t argc, YStatus& status) {
  if (ScmVMExternal::VMECheckArgCount(argc, 1, 2, status) == 0) return;
  const long last = ScmVMExternal::VMEAssertIsALong(static_cast<YArgNum>(argc), status, -1);
  if (!YStatusIsGood(status)) return;
  const long first = argc == 2 ? ScmVMExternal::VMEAssertIsALong(1, status, -1) : last;
  if (!YStatusIsGood(status)) return;
  ScmVMExternal::StackPushLong(first);
  ScmVMExternal::StackPushLong(last);
  ScmVMExternal::StackCons();
}
