// Output of scripts and output of C++ code go through two buffers to one place. Each side is
// flushed before the other one takes over, so what is read has the order in which it was written.

#include "foundation/YEncoding.h"
#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

void SetUp(SCM port, const char* encoding) {
  scm_set_port_encoding_x(port, scm_from_latin1_string(encoding));
  scm_set_port_conversion_strategy_x(port, scm_from_latin1_symbol("substitute"));
  scm_setvbuf(port, scm_from_latin1_symbol("line"), SCM_UNDEFINED);
}

}  // namespace

void OpenPorts() {
  Engine& engine = TheEngine();
  const char* const encoding = YEncoding::OfLocale();
  engine.output = scm_current_output_port();
  engine.errors = scm_current_error_port();
  SetUp(engine.output, encoding);
  SetUp(engine.errors, encoding);
  scm_set_port_encoding_x(scm_current_input_port(), scm_from_latin1_string(encoding));
}

void FlushScheme() {
  const Engine& engine = TheEngine();
  scm_force_output(engine.output);
  scm_force_output(engine.errors);
}

}  // namespace yse
