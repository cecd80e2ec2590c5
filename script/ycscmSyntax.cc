// The primitives that build syntax fragments.
//
// A primitive meets its arguments from the last written to the first, and insertAnd inserts at the
// front, so a sequence comes out as it was written; a string belongs to the token in front of it.

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

// A fragment while its arguments are taken. It is freed with the builder unless release() hands it
// out.
class FragmentBuilder {
 public:
  enum class Kind { Sequence, Choice };

  explicit FragmentBuilder(Kind kind)
      : kind_(kind), graph_(YChecked(new (std::nothrow) YcluiSyntaxGraph)) {}

  // Takes the argument on top of the stack when it is a token id, a string or a fragment, and
  // answers whether it is. One that will not do clears bit 0.
  bool take(YArgNum position, YStatus& status);

  YcluiSyntaxGraph& graph() { return *graph_; }
  Graph release() { return std::move(graph_); }

 private:
  Kind kind_;
  Graph graph_;
  const char* action_ = nullptr;  // read already, waiting for the token in front of it

  void takeToken(YArgNum position, YStatus& status);
  void takeFragment(YArgNum position, YStatus& status);

  template <class Part>
  void insert(Part* part) {
    if (kind_ == Kind::Sequence) {
      graph_->insertAnd(part);
    } else {
      graph_->insertOr(part);
    }
  }
};

bool FragmentBuilder::take(YArgNum position, YStatus& status) {
  if (ScmVMExternal::StackLongP() != 0 || ScmVMExternal::StackSmallLongP() != 0) {
    takeToken(position, status);
    return true;
  }
  if (ScmVMExternal::StackStringP() != 0) {
    action_ = ScmVMExternal::StackPopString(status);
    return true;
  }
  if (ScmVMExternal::StackHandleP() != 0) {
    takeFragment(position, status);
    return true;
  }
  return false;
}

void FragmentBuilder::takeToken(YArgNum position, YStatus& status) {
  const std::uint32_t id = ycscmPopTokenId(position, status);
  if (!YStatusIsGood(status)) return;
  insert(YChecked(new (std::nothrow) YcluiSyntaxNode(id, action_)));
  action_ = nullptr;
}

void FragmentBuilder::takeFragment(YArgNum position, YStatus& status) {
  void* handle = ScmVMExternal::StackPopHandle(status);
  if (!YStatusIsGood(status)) return;
  const Graph part = ycscmTakeFragment(handle);
  if (part == nullptr) {
    ycscmRefuse(position, YScmArgSyntaxElement, status);
    return;
  }
  insert(part.get());
}

// Pops a priority pair and gives its two bytes to what follows the start. Bit 0 is cleared when it
// does not hold two longs.
void takePriority(YcluiSyntaxGraph& graph, YStatus& status) {
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

// A primitive that failed pushes a handle too, but of nothing: what it built is freed.
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
    if (builder.take(static_cast<YArgNum>(position), status)) continue;
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
    if (builder.take(static_cast<YArgNum>(position), status)) continue;
    if (ScmVMExternal::StackPairP() != 0) {
      takePriority(builder.graph(), status);
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
