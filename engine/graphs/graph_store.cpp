#include "engine/graphs/graph_store.h"

namespace nimbry {

void loadgrafdata(Copy&) {}

void savegrafdata(Copy& copy) {
    copy.state.run.savingrafs.clear();
}

void updategraphs(Copy&) {}

void refresh_missing_graphs(Copy&) {}

}  // namespace nimbry
