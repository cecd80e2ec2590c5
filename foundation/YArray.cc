#include "foundation/YArray.h"

int YArrayBinFind(const void* key, const void* base, unsigned int count, unsigned int elementSize,
                  int (*cmp)(const void*, const void*), unsigned long flag) {
  const char* elements = static_cast<const char*>(base);
  unsigned int low = 0;
  unsigned int high = count;
  while (low < high) {
    const unsigned int middle = low + (high - low) / 2;
    const int order = cmp(key, elements + static_cast<std::size_t>(middle) * elementSize);
    if (order == 0 && flag == 0) return -1;
    if (order < 0) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return static_cast<int>(low);
}
