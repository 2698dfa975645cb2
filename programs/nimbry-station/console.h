#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/ports/clock.h"
#include "engine/station/train_writer.h"
#include "programs/nimbry-station/memory.h"
#include "programs/nimbry-station/scenario.h"

namespace nimbry::simulator {

/// The display unit of the station: measures the weather of a seed, remembers, and writes its groups. What a scenario
/// does to the station's readings happens here; what it does to bytes and cable, in Station.
class Console {
public:
    /// A console that has stood in this weather for thirty days at `start`, when it was last reset.
    Console(std::uint64_t seed, CivilTime start);

    /// Measures and remembers up to this moment, which must not lie before the last one.
    void live_to(CivilTime moment);

    // What a scenario does, at the moment lived to.
    void apply(const HoldReading& hold);
    void apply(const ReleaseReading& release);
    void apply(const BeginFault& begin) { faults_[static_cast<std::size_t>(begin.fault)] = true; }
    void apply(const EndFault& end);
    void apply(const SetDigit& digit) { digits_.push_back(digit); }
    void apply(const ReleaseDigits&) { digits_.clear(); }
    void apply(const ResetRain&);
    void apply(const ResetRecords&);
    void apply(const TurnClock& turn) { clock_turned_ += turn.by; }

    /// What the groups say now, but for single digits that a scenario sets.
    [[nodiscard]] StationReadings readings() const;

    /// The train and the lone wind group of now, 141 and 27 bytes, checksums right.
    [[nodiscard]] Bytes train() const { return sealed(write_train(readings())); }
    [[nodiscard]] Bytes lone_wind() const { return sealed(write_lone_wind(readings())); }

private:
    struct Hold {
        double from = 0, to = 0;
        CivilTime begin{};
        std::chrono::seconds over{0};
        [[nodiscard]] double at(CivilTime moment) const;
    };

    [[nodiscard]] CivilTime clock() const { return moment_ + clock_turned_; }
    [[nodiscard]] bool faulty(Fault fault) const { return faults_[static_cast<std::size_t>(fault)]; }
    [[nodiscard]] std::optional<Hold>& held(Reading reading) { return holds_[static_cast<std::size_t>(reading)]; }
    void measure();
    void hold_on();
    [[nodiscard]] Bytes sealed(Bytes frame) const;

    std::uint64_t seed_;
    CivilTime moment_;
    std::chrono::seconds clock_turned_{0};
    Values values_;
    bool air_saturated_ = false;  ///< the humidity sensor is at its end
    Memory memory_;
    std::array<std::optional<Hold>, reading_infos.size()> holds_{};
    std::array<bool, fault_names.size()> faults_{};
    std::vector<SetDigit> digits_;
};

}  // namespace nimbry::simulator
