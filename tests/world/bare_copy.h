#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "engine/core/copy.h"
#include "engine/core/run_time_error.h"
#include "engine/graphs/graph_scales.h"
#include "engine/station/group_layout.h"
#include "engine/station/train_groups.h"
#include "engine/station/train_writer.h"
#include "tests/world/memory_files.h"
#include "tests/world/recording_ports.h"
#include "tests/world/scripted_line.h"
#include "tests/world/scripted_streams.h"
#include "tests/world/scripted_transfers.h"
#include "tests/world/virtual_clock.h"
#include "tests/world/virtual_pauses.h"

namespace nimbry::test {

/// A running copy without an Engine around it, for the routines that take a Copy: the state as a start leaves it, ports
/// that record, and the two doors that a frame comes in by. The run-time errors of a routine reach the test.
struct BareCopy {
    VirtualClock clock;
    VirtualPauses pauses{clock};
    MemoryFiles files{clock};
    ScriptedLine line{clock};
    RecordingDatagrams datasock;
    ScriptedStreams streams{clock, pauses};
    RecordingNotices notices{clock, pauses};
    RecordingSounds sounds;
    RecordingDesktop desktop;
    ScriptedTransfers transfers{clock};
    Ports ports{clock, pauses, files, line, datasock, streams, notices, sounds, desktop, transfers};

    WeatherState state;
    clsIniFile ini{files, "Nimbry.ini"};
    ProgramLog log{state, clock, files};
    Timers timers;
    Copy copy{state, ports, ini, log, timers};

    BareCopy() {
        reset_main_panel(state);
        setgraphscales(state);
    }

    /// A train with these bytes comes in.
    void frame(const Bytes& bytes) {
        state.comm.RawBytes = bytes;
        bytes.size() == lone_length ? docfgroup(copy) : domaingroup(copy);
    }
    void train(const StationReadings& readings) { frame(write_train(readings)); }
    void lone(const StationReadings& readings) { frame(write_lone_wind(readings)); }

    /// The lines of the program log.
    [[nodiscard]] std::vector<std::string> log_lines() const {
        std::vector<std::string> lines;
        const std::string text = files.contents(std::string(ProgramLog::file));
        for (std::size_t from = 0; from < text.size();) {
            const std::size_t end = std::min(text.find("\r\n", from), text.size());
            lines.push_back(text.substr(from, end - from));
            from = end + 2;
        }
        return lines;
    }
};

}  // namespace nimbry::test
