// The array of strings.

#ifndef FOUNDATION_YSTRING_ARRAY_H_
#define FOUNDATION_YSTRING_ARRAY_H_

#include "foundation/YArray.h"
#include "foundation/YString.h"

// An array of strings. Unlike those of YArray, its fields and bumpsize are public.
class YString_Array : public YArray<YString> {
 public:
  using YArray<YString>::bumpsize;
  using YArray<YString>::capacity;
  using YArray<YString>::data;
};

#endif  // FOUNDATION_YSTRING_ARRAY_H_
