// The four outputs, into any stream. The print operations of Paragrafoa pass standard
// output.
#pragma once

#include <iosfwd>

#include "Paragrafoa.h"

namespace lemara {

void write_multext(std::ostream& out, const Paragrafoa& paragraph, bool with_values);
void write_cg3(std::ostream& out, const Paragrafoa& paragraph, bool with_values);
void write_zuzenlex(std::ostream& out, const Paragrafoa& paragraph, const Sarea* network);
void write_ikute(std::ostream& out, const Paragrafoa& paragraph);

}  // namespace lemara
