#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "engine/core/busy_flag.h"
#include "engine/graphs/graph_drawing.h"
#include "engine/graphs/graph_rows.h"

namespace nimbry {

// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.

/// (kept) The limits and tick step of the quantities that depend on a unit, in the unit in force. Set by
/// setgraphscales().
struct GraphLimits {
    double grtmin = 0, grtmax = 0, grttic = 0;  ///< temperature
    double grwmin = 0, grwmax = 0, grwtic = 0;  ///< wind
    double grbmin = 0, grbmax = 0, grbtic = 0;  ///< barometer
    double grrmin = 0, grrmax = 0, grrtic = 0;  ///< rain rate
};

/// A table of three columns: row s has the least and greatest value that series s may have and its tick step; row
/// 10 + s the low and high end of the axis it is drawn on and an eighth of their distance. Row 20 is spare. The file
/// holds rows 0 to 19.
using GraphScales = std::array<std::array<float, 3>, 21>;

/// What is read off the main pane: the row under the pointer, and how it is shown there.
struct GraphMarker {
    int row = 0;
    double x = 0;                 ///< twips
    std::vector<GraphDots> dots;  ///< one for each series that has a value there
    std::string text;             ///< "Outdoor 8.1 °C Dew 4.2 °C at 05 Oct 2026 14:00:33"
};

/// Everything behind the graphs: the day of samples, the scales, and the six drawings that the panes show.
struct GraphState {
    GraphRows rows;
    GraphScales gscale{};
    GraphLimits limits;
    int grmax = 0;                 ///< the highest row of the file that was loaded
    int grafage = 0;               ///< that file's age, whole minutes
    bool grafsjustloaded = false;  ///< a store was loaded and has not been drawn yet
    bool GraphsDisplayed = false;  ///< graphs have been drawn in this run; without that the store is not saved
    BusyFlag GrafBusy;             ///< a sample is being taken: data from the network waits
    int GrFailCount = 0;           ///< ticks of GrFailTimer that found nothing drawn
    double Intensity = 0;          ///< (kept) set to 0 with each sample
    double webpeakgust = 0;        ///< (kept) highest gust of the last graph minute, in the wind unit

    std::array<GraphDrawing, graph_count> panes;  ///< by pane: the main one, then the five small ones
    int draws = 0;                                ///< grows with every drawing of the panes
    std::optional<GraphMarker> marker;            ///< while something is read off the main pane
};

}  // namespace nimbry
