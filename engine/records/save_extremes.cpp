#include "engine/records/save_extremes.h"

namespace nimbry {

void SaveExtremes(Copy& copy) {
    copy.state.run.tdaysaving.clear();
}

}  // namespace nimbry
