// Keywords without declared arguments.

#ifndef LEX_YCLUIPLAINKEYWORD_H_
#define LEX_YCLUIPLAINKEYWORD_H_

#include "lex/YcluiKeyword.h"

// With an abbreviation the keyword matches every prefix of its name that starts with it, including
// the empty one when the abbreviation is empty; without one (null) it matches its name only. The
// abbreviation is stored in lower case after the name.
class YcluiPlainKeyword : public YcluiKeyword {
 public:
  YcluiPlainKeyword(const char* name, const char* abbreviation, std::uint32_t id);

  unsigned long hashKey() const override;
  YWord equalsKey(const void* k) const override;
  const char* abbreviation() const override;
};

#endif  // LEX_YCLUIPLAINKEYWORD_H_
