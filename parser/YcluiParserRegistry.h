// All parsers of the process. Internal to the parser.

#ifndef PARSER_YCLUIPARSERREGISTRY_H_
#define PARSER_YCLUIPARSERREGISTRY_H_

#include "foundation/YLiveList.h"
#include "foundation/YStack.h"

class YcluiParser;

// Lists the live parsers in the order of construction, and in the mortuary those that are condemned
// and wait for their destruction. The registry itself destroys no parser. Each thread finds its own
// parsers, those that it has constructed, and has a mortuary of its own.
class YcluiParserRegistry {
 public:
  // The entry of a parser, which owns it.
  struct Entry {
    explicit Entry(YcluiParser& parserOfThis) : parser(&parserOfThis), membership(*this) {}

    YcluiParser* parser;
    int running = 0;  // number of its operations on the call stack
    bool isCondemned = false;
    YLiveList<Entry>::Member membership;
  };

  static void Join(Entry& entry);
  static void Leave(Entry& entry);
  // The live parser at that address; null when there is none or it is condemned. The address may be
  // any number.
  static YcluiParser* Find(long address);
  // The live parsers that are not condemned, by index; null after the last.
  static YcluiParser* At(int index);

  // Does nothing when there is one. Without memory there is none.
  static void CreateMortuary();
  // The parsers in it stay alive.
  static void DestroyMortuary();
  // Puts the parser into the mortuary. Does nothing when there is none, or the parser is in it.
  static void Condemn(Entry& entry);
  // Removes the parser from the mortuary, if it is there.
  static void Exhume(const Entry& entry);
  // Removes the youngest entry whose parser is not running, and returns the parser; null when there
  // is none.
  static YcluiParser* TakeBody();

 private:
  static thread_local YStack<Entry*>* Mortuary;  // null when there is none
  static YLiveList<Entry> All;

  static int IndexOfBody(const Entry& entry);
  static void RemoveBody(int index);
};

#endif  // PARSER_YCLUIPARSERREGISTRY_H_
