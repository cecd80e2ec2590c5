// Scripts and C++ code write to the same files through different buffers. Each buffer is flushed
// before the other side runs, so the output is in the order of writing.

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
