// All parsers of the process.

#ifndef PARSER_YCLUIPARSERREGISTRY_H_
#define PARSER_YCLUIPARSERREGISTRY_H_

#include "foundation/YStack.h"

class YcluiParser;

// Lists the live parsers in the order of their construction, and in the mortuary those that were
// condemned, which wait for their destruction. The registry destroys nothing itself.
class YcluiParserRegistry {
 public:
  // What is recorded of a parser; a part of it.
  struct Entry {
    explicit Entry(YcluiParser& parserOfThis) : parser(&parserOfThis) {}

    YcluiParser* parser;
    int running = 0;  // its operations on the call stack
    bool isCondemned = false;
    Entry* previous = nullptr;
    Entry* next = nullptr;
  };

  static void Join(Entry& entry);
  static void Leave(Entry& entry);
  // The live parser at that address, which need not be that of any object; null when there is none
  // or it is condemned.
  static YcluiParser* Find(long address);
  // The live parsers that are not condemned, by index; null after the last.
  static YcluiParser* At(int index);

  static void CreateMortuary();   // nothing when there is one
  static void DestroyMortuary();  // the bodies stay alive
  // Nothing without a mortuary, or when the parser is in it already.
  static void Condemn(Entry& entry);
  // Removes the parser from the mortuary, if it is there.
  static void Exhume(const Entry& entry);
  // Removes the last body that is not running from the mortuary, and returns it; null when there is
  // none.
  static YcluiParser* TakeBody();

 private:
  static YStack<Entry*>* Mortuary;
  static Entry* First;
  static Entry* Last;

  static int IndexOfBody(const Entry& entry);
  static void RemoveBody(int index);
};

#endif  // PARSER_YCLUIPARSERREGISTRY_H_
