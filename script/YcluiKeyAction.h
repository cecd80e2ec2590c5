// What a key of a text field does. Internal to script/.

#ifndef SCRIPT_YCLUIKEYACTION_H_
#define SCRIPT_YCLUIKEYACTION_H_

#include "foundation/YArray.h"
#include "foundation/YString.h"

// A key, by the first byte of what it types, and the format of the script text that it runs.
struct YcluiKeyAction {
  char key = '\0';
  YString format;

  YcluiKeyAction() = default;
  YcluiKeyAction(char theKey, const char* theFormat) : key(theKey), format(theFormat) {}
};

using YcluiKeyAction_Array = YArray<YcluiKeyAction>;

#endif  // SCRIPT_YCLUIKEYACTION_H_
