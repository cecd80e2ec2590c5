// The standard streams as an editor uses them.

#ifndef WORKSHOP_SERVER_CLUISERVERSTREAMS_H_
#define WORKSHOP_SERVER_CLUISERVERSTREAMS_H_

#include "workshop/server/CluiMessageStream.h"

// Takes the standard input and output for messages. From then on scripts and the program read
// nothing from the one, and what they write to the other goes to the standard error stream.
class CluiServerStreams {
 public:
  CluiServerStreams();
  CluiServerStreams(const CluiServerStreams&) = delete;
  CluiServerStreams& operator=(const CluiServerStreams&) = delete;
  ~CluiServerStreams();

  CluiMessageStream& messages() { return messages_; }

 private:
  int in_;
  int out_;
  CluiMessageStream messages_;
};

#endif  // WORKSHOP_SERVER_CLUISERVERSTREAMS_H_
