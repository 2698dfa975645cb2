#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Writes the data files `NimbData.txt` and `NimbData.csv`, each unless another program has it open, and makes the text
/// report `wxtext.txt` from `wxtexttemplate.txt`, if there is one, in the work file `tpwxtexttemplate.txt`. Bears the
/// tag "wxtext".
void wxtext(Copy& copy);

}  // namespace nimbry
