// What walkers remember of a node that leads on to many. Internal to the walker.

#ifndef SYNTAX_YCLUINODEINDEX_H_
#define SYNTAX_YCLUINODEINDEX_H_

#include "syntax/YcluiIdIndex.h"

class YRing;

struct YcluiNodeIndex {
  YcluiIdIndex matches;
  // The successors as indefinite nodes, up to the link that was read last.
  YcluiIdIndex indefinites;
  const YRing* read = nullptr;
};

#endif  // SYNTAX_YCLUINODEINDEX_H_
