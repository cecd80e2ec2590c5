// The primitives that declare words and indefinite syntax.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "foundation/YcluiLimits.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiToken.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/ycscmArguments.h"
#include "script/ycscmHandles.h"
#include "script/ycscmPrimitives.h"
#include "syntax/YcluiSyntaxNode.h"

namespace {

constexpr std::uint32_t LeastArguments = 2;

// The arguments of clui-token, which are distinguished by their types and positions:
//   parser, [id], word or character, [abbreviation], value types ...
class WordDeclaration {
 public:
  explicit WordDeclaration(std::uint32_t argc) : left_(argc) {}

  // The number of arguments that are still on the stack.
  std::uint32_t left() const { return left_; }

  // Pops all arguments except the parser. Records a code and returns false when one is invalid.
  bool popWordAndTypes(YStatus& status);

  // Pops the parser. Records a code and returns null when it is invalid.
  YcluiParser* popParser(YStatus& status);

  // Declares the word and returns its id, or 0 when it could not be added.
  std::uint32_t addTo(YcluiLex& lexer);

 private:
  std::uint32_t left_;
  YcluiValueType types_[YcluiMostTokenArguments - LeastArguments];
  std::size_t firstType_ = std::size(types_);  // filled from the end, as they are popped
  const char* word_ = nullptr;
  const char* abbreviation_ = nullptr;
  char character_ = 0;
  bool isCharacter_ = false;
  std::uint32_t id_ = 0;  // 0 means the next automatic id

  // Counts a popped argument and returns its position.
  YArgNum countPopped() { return static_cast<YArgNum>(left_--); }
  void popTypes(YStatus& status);
  void popAbbreviation(YStatus& status);
  void popWord(YStatus& status);
  // Only single-byte characters can be declared.
  void popCharacter(YStatus& status);
  // Cuts the id to 24 bits. Refuses one that only becomes 0 by that.
  void popId(YStatus& status);
};

bool WordDeclaration::popWordAndTypes(YStatus& status) {
  popTypes(status);
  if (YStatusIsGood(status)) popAbbreviation(status);
  if (YStatusIsGood(status)) popWord(status);
  if (YStatusIsGood(status)) popId(status);
  if (!YStatusIsGood(status)) cluiWarning(YErrBadTokenArgument);
  return YStatusIsGood(status);
}

void WordDeclaration::popTypes(YStatus& status) {
  while (left_ > LeastArguments && YStatusIsGood(status) && ycscmLongIsOnTop()) {
    const long type = ScmVMExternal::StackPopLong(status);
    const YArgNum position = countPopped();
    if (!ycscmFits<std::int32_t>(type)) ycscmRefuse(position, YScmArgLong, status);
    types_[--firstType_] = static_cast<YcluiValueType>(type);
  }
}

void WordDeclaration::popAbbreviation(YStatus& status) {
  if (left_ <= LeastArguments || ScmVMExternal::StackStringP() == 0) return;
  abbreviation_ = ScmVMExternal::StackPopString(status);
  countPopped();
}

void WordDeclaration::popWord(YStatus& status) {
  if (ScmVMExternal::StackCharP() != 0) {
    popCharacter(status);
  } else if (ScmVMExternal::StackStringP() != 0) {
    word_ = ScmVMExternal::StackPopString(status);
    countPopped();
  } else if (abbreviation_ != nullptr && ycscmLongIsOnTop()) {
    // The argument before the supposed abbreviation is an id, so the string is the word.
    word_ = abbreviation_;
    abbreviation_ = nullptr;
  } else {
    ycscmRefuse(static_cast<YArgNum>(left_), YScmArgString, status);
  }
}

void WordDeclaration::popCharacter(YStatus& status) {
  const long code = ScmVMExternal::StackPopChar(status);
  const YArgNum position = countPopped();
  if (!ycscmFits<std::uint8_t>(code)) ycscmRefuse(position, YScmArgChar, status);
  character_ = static_cast<char>(code);
  isCharacter_ = true;
}

void WordDeclaration::popId(YStatus& status) {
  if (left_ != LeastArguments || !ycscmLongIsOnTop()) return;
  const long id = ScmVMExternal::StackPopLong(status);
  const YArgNum position = countPopped();
  id_ = static_cast<std::uint32_t>(id & YcluiIdMask);
  if (id_ == 0 && id != 0) ycscmRefuse(position, YScmArgLong, status);
}

YcluiParser* WordDeclaration::popParser(YStatus& status) {
  const long address = ScmVMExternal::VMEAssertIsALong(1, status, -1);
  countPopped();
  YcluiParser* parser = YStatusIsGood(status) ? YcluiParser::FindLive(address) : nullptr;
  if (parser != nullptr) return parser;
  cluiWarning(YErrBadTokenParser);
  if (YStatusIsGood(status)) ycscmRefuse(1, YScmArgLong, status);
  return nullptr;
}

std::uint32_t WordDeclaration::addTo(YcluiLex& lexer) {
  if (isCharacter_) return lexer.addKeyword(character_, id_);
  const std::size_t count = std::size(types_) - firstType_;
  if (count == 0) return lexer.addKeyword(word_, abbreviation_, id_);
  return lexer.addKeyword(word_, static_cast<int>(count), types_ + firstType_, id_);
}

// Returns the id of the new word, 0 when none was added.
std::uint32_t declareWord(WordDeclaration& declaration, YStatus& status) {
  if (!declaration.popWordAndTypes(status)) return 0;
  YcluiParser* parser = declaration.popParser(status);
  return parser == nullptr || parser->lex() == nullptr ? 0 : declaration.addTo(*parser->lex());
}

}  // namespace

void ycscmToken(std::uint32_t argc, YStatus& status) {
  YStatusSetGood(status);
  WordDeclaration declaration(argc);
  std::uint32_t id = 0;
  if (argc < LeastArguments || argc > YcluiMostTokenArguments) {
    ScmVMExternal::VMESetWrongNumArgs(argc, LeastArguments, YcluiMostTokenArguments, status);
  } else {
    id = declareWord(declaration, status);
  }
  ScmVMExternal::StackPopN(declaration.left(), status);
  ScmVMExternal::StackPushLong(id);
}

void ycscmIndefiniteSyntax(std::uint32_t, YStatus& status) {
  YStatusSetGood(status);
  const char* action = ycscmPopString(3, status);
  if (!YStatusIsGood(status)) {
    ycscmPrintError("error on (clui-indefinite-syntax)");
    cluiWarning(YErrBadSyntaxArgument);
    return;
  }
  const std::uint32_t id = ycscmPopTokenId(2, status);
  if (!YStatusIsGood(status)) return;
  const long address = ScmVMExternal::VMEAssertIsALong(1, status, -1);
  if (!YStatusIsGood(status)) {
    cluiWarning(YErrBadSyntaxArgument);
    return;
  }
  YcluiParser* parser = ycscmLiveParser(address, status);
  if (parser == nullptr) return;

  auto* node = YChecked(new (std::nothrow) YcluiSyntaxNode(id, action));
  parser->addIndefiniteNode(node);
  const bool isOwned = node->kind == YcluiNodeIndefinite;
  if (!isOwned) ycscmKeepNode(node);
  ScmVMExternal::StackPushHandle(node, nullptr, nullptr);
}
