#include "engine/station/oncomm.h"

#include "engine/core/run_time_error.h"
#include "engine/core/serial_port.h"
#include "engine/network/forwarding.h"
#include "engine/station/status_label.h"
#include "engine/station/train_groups.h"

namespace nimbry {

namespace {

constexpr std::string_view weather_data = "weather data";

std::string error_word(LineFault fault) {
    switch (fault) {
        case LineFault::framing: return "Framing Error";
        case LineFault::overrun: return "Overrun Error";
        case LineFault::buffer_overrun: return "RxOver Error";
        case LineFault::gone: break;
    }
    return "Comms Error";
}

}  // namespace

void OnComm::line_readable() {
    tagged("OnComm", [&] {
        if (may_receive()) gather();
    });
}

void OnComm::line_fault(LineFault fault) {
    tagged("OnComm", [&] {
        const WeatherState& state = copy_.state;
        const bool ours = state.comm.SerComReady && !state.run.ProgramClosing && !state.settings.fromnet;
        const bool gone = fault == LineFault::gone && ours;
        if (gone) lost_ = true;
        if (may_receive()) {
            copy_.state.comm.ErrorWord = error_word(fault);
            stop_for_error();
        } else if (gone) {
            // Whatever holds the data off, the port must come back.
            framer_.hold(copy_.ports.clock.monotonic());
        }
    });
}

void OnComm::line_opened() {
    abandon();
    lost_ = false;
}

void OnComm::wake() {
    tagged("OnComm", [&] {
        const Instant now = copy_.ports.clock.monotonic();
        if (!framer_.wake_at() || now < *framer_.wake_at()) return;
        if (framer_.gathering() && closed_to_data()) {
            empty_line(copy_);
            abandon();
            return;
        }
        // The count is taken of everything that has arrived by now. After a fault this throws it away.
        gather();
        const std::size_t gathered = framer_.count();
        switch (framer_.poll(now)) {
            case LineFramer::Outcome::frame: work(); break;
            case LineFramer::Outcome::train_overran:
                copy_.state.comm.counters.bytes_thrown_away += gathered;
                drop_overrun();
                break;
            case LineFramer::Outcome::hold_over: end_hold(); break;
            case LineFramer::Outcome::nothing: break;
        }
    });
}

bool OnComm::closed_to_data() const {
    const WeatherState& state = copy_.state;
    return !state.comm.SerComReady || state.comm.splashing || state.comm.initflag || state.comm.changebusy ||
           state.settings.fromnet || state.run.ProgramClosing;
}

/// What every event of the line begins with. True when its bytes or its fault may be looked at.
bool OnComm::may_receive() {
    CommState& comm = copy_.state.comm;
    if (!comm.SerComReady || copy_.state.run.ProgramClosing) {
        abandon();
        return false;
    }
    if (comm.splashing) {
        empty_line(copy_);
        abandon();
        return false;
    }
    comm.EventWord.clear();
    comm.ErrorWord.clear();
    if (copy_.state.settings.fromnet) {
        abandon();
        return false;
    }
    if (comm.initflag) {
        empty_line(copy_);
        abandon();
        return false;
    }
    comm.ccheckflagb = false;
    if (comm.changebusy) {
        empty_line(copy_);
        abandon();
        return false;
    }
    return true;
}

/// Takes what the system holds. It is kept when a frame is being gathered or can be begun, and thrown away while one is
/// worked on and after a fault.
void OnComm::gather() {
    CommState& comm = copy_.state.comm;
    const bool can_begin = framer_.state() == LineFramer::State::idle && !comm.dworkingb;
    if (!can_begin && !framer_.gathering()) return empty_line(copy_);

    const Bytes bytes = copy_.ports.line.take();
    const std::size_t before = framer_.count();
    if (framer_.push(bytes, copy_.ports.clock.monotonic())) {
        if (framer_.gathering()) comm.dworkingb.set();
        return;
    }
    comm.counters.bytes_thrown_away += before + bytes.size();
    refuse(comm, FrameFault::buffer_overran);
    comm.ErrorWord = error_word(LineFault::buffer_overrun);
    stop_for_error();
}

/// Gives up a frame that is being gathered. One that is being worked on is never given up: it may be what set the flag
/// that holds the data off.
void OnComm::abandon() {
    if (!framer_.gathering()) return;
    CommState& comm = copy_.state.comm;
    comm.counters.bytes_thrown_away += framer_.count();
    framer_.abandon();
    comm.dworkingb.clear();
    comm.GroupTag.clear();
}

void OnComm::stop_for_error() {
    show_line_error(copy_.state);
    empty_line(copy_);
    copy_.state.comm.counters.bytes_thrown_away += framer_.count();
    framer_.hold(copy_.ports.clock.monotonic());
}

void OnComm::end_hold() {
    // A frame that is still being worked on keeps its flag, tag and bytes: a second one must not come into the routines
    // that the first one waits in.
    if (framer_.state() == LineFramer::State::idle) let_frame_go();
    if (!lost_) return;
    lost_ = false;
    if (copy_.ports.line.is_open()) return;
    copy_.state.comm.ErrorWord = error_word(LineFault::gone);
    show_lost_line(copy_);
    line_lost(copy_);
}

void OnComm::drop_overrun() {
    refuse(copy_.state.comm, FrameFault::train_overran);
    let_frame_go();
}

void OnComm::let_frame_go() {
    CommState& comm = copy_.state.comm;
    comm.RawBytes.clear();
    comm.GroupTag.clear();
    comm.dworkingb.clear();
}

void OnComm::work() {
    CommState& comm = copy_.state.comm;
    comm.RawBytes = framer_.frame();
    comm.GroupTag = tag_of(comm.RawBytes);
    comm.refusal.reset();

    const bool too_early = comm.GroupTag == "CF" && !copy_.state.run.fullystarted;
    if (too_early)
        refuse(comm, FrameFault::before_first_train);
    else
        run_groups();

    empty_line(copy_);
    framer_.work_done();
    let_frame_go();
    if (too_early) return;
    comm.EventWord = weather_data;
    show_data_arrival(copy_);
}

/// The frame's groups, then the frame to the clients: good or bad, as its tag alone decides.
void OnComm::run_groups() {
    CommState& comm = copy_.state.comm;
    const bool train = comm.GroupTag == "8F";
    if (!train && comm.GroupTag != "CF") return refuse(comm, FrameFault::unknown_tag);
    if (train) {
        domaingroup(copy_);
        comm.gotcomms = true;
    } else {
        docfgroup(copy_);
    }
    // The groups may have waited; what goes out is the frame as it was taken from the line.
    forwardgroup(copy_, framer_.frame());
}

}  // namespace nimbry
