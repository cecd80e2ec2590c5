// The keyword without arguments.

#ifndef LEX_YCLUIPLAINKEYWORD_H_
#define LEX_YCLUIPLAINKEYWORD_H_

#include "lex/YcluiKeyword.h"

// With an abbreviation the keyword answers to every prefix of its name that begins with it, the
// empty one included when the abbreviation is empty; without one (null) to its name alone. The
// abbreviation is kept in lower case behind the name.
class YcluiPlainKeyword : public YcluiKeyword {
 public:
  YcluiPlainKeyword(const char* name, const char* abbreviation, std::uint32_t id);

  unsigned long hashKey() const override;
  YWord equalsKey(const void* k) const override;
  const char* abbreviation() const override;
};

#endif  // LEX_YCLUIPLAINKEYWORD_H_
