// The action of a key of a text field. Internal to script/.

#ifndef SCRIPT_YCLUIKEYACTION_H_
#define SCRIPT_YCLUIKEYACTION_H_

#include "foundation/YArray.h"
#include "foundation/YString.h"

// A key, identified by the first byte that it types, and the format of the script text to run.
struct YcluiKeyAction {
  char key = '\0';
  YString format;

  YcluiKeyAction() = default;
  YcluiKeyAction(char theKey, const char* theFormat) : key(theKey), format(theFormat) {}
};

using YcluiKeyAction_Array = YArray<YcluiKeyAction>;

#endif  // SCRIPT_YCLUIKEYACTION_H_
