// Records how a script declares its languages.

#ifndef WORKSHOP_CLUIGRAMMARRECORDER_H_
#define WORKSHOP_CLUIGRAMMARRECORDER_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/YStatus.h"
#include "workshop/CluiGrammar.h"

class YcluiParser;

// The format of a key, from clui-set-keystroke-action.
struct CluiKeyFormat {
  std::string text;
  CluiScriptPlace place;
};

// Between start and end, successful calls of the primitives that declare words and syntax are
// recorded, with their positions. Results and errors stay the same; but the names are macros, which
// a script notices if it assigns to them by set! or gets them from a module as values. Parts of a
// syntax that is nested more than MostDepth deep are not recorded: the fragment has no parts. There
// is at most one recorder in a process, since the primitives stay replaced.
class CluiGrammarRecorder {
 public:
  static constexpr int MostDepth = 10'000;

  CluiGrammarRecorder() = default;
  CluiGrammarRecorder(const CluiGrammarRecorder&) = delete;
  CluiGrammarRecorder& operator=(const CluiGrammarRecorder&) = delete;
  ~CluiGrammarRecorder();

  // Begins to record. Returns false when the engine cannot run the code that is needed.
  // REQUIRES: the engine is started and the command library open; no script has been loaded.
  bool start();

  // Ends the recording. Call it when the script has been loaded, and before the functions below.
  void end();

  // What was declared for that parser, null when the recorder did not see it created.
  const CluiGrammar* grammarOf(const YcluiParser& parser) const;
  const std::vector<CluiKeyFormat>& keyFormats() const { return keyFormats_; }
  // The fragments that the script created and did not use.
  std::vector<const CluiFragment*> unusedFragments() const;

  // Also of code that was read after the recording ended (CluiCodeReader): whether the syntax may
  // be replaced, or words without a meaning be added to a command, by code that did not run while
  // the script was loaded, or that can run again.
  bool maySetSyntax() const { return maySetSyntax_; }
  bool mayPutDummies() const { return mayPutDummies_; }

 private:
  struct Call;

  std::map<long, std::unique_ptr<CluiGrammar>> grammars_;  // by the number of the parser
  struct Built {
    CluiFragment fragment;
    int depth = 0;
  };
  std::map<const void*, Built> fragments_;  // that exist and are not used yet
  std::vector<CluiKeyFormat> keyFormats_;
  bool records_ = false;
  bool maySetSyntax_ = false;
  bool mayPutDummies_ = false;

  static void Note(std::uint32_t count, YStatus& status);
  static void Mention(std::uint32_t count, YStatus& status);

  void note(Call& call);
  void noteWord(const Call& call);
  void noteFragment(const Call& call, CluiFragment::Kind kind);
  void noteSyntax(const Call& call);
  void noteAnywhere(const Call& call);
  CluiGrammar* grammarFor(const Call& call);
  Built take(const void* handle);
  // Calls `visit` with each declaration.
  template <class Visit>
  void eachCall(const Visit& visit);
};

#endif  // WORKSHOP_CLUIGRAMMARRECORDER_H_
