#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/core/engine.h"
#include "engine/station/train_writer.h"
#include "tests/world/journal.h"
#include "tests/world/memory_files.h"
#include "tests/world/recording_ports.h"
#include "tests/world/scripted_line.h"
#include "tests/world/scripted_streams.h"
#include "tests/world/scripted_transfers.h"
#include "tests/world/virtual_clock.h"
#include "tests/world/virtual_pauses.h"

namespace nimbry::test {

/// A whole copy of Nimbry and everything around it, in virtual time: set the scene on the ports, start() it, send
/// bytes, let time pass, and look at the state, the disk, the notices and the journal.
///
///     World world;
///     world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
///     world.start();
///     world.send_train();                       // the station's usual readings, at its clock's usual time
///     EXPECT_EQ(world.panel().Text2[0].text, "+12.3 \260C");
///
/// The Engine is driven exactly as a program drives it: every event in a conversation of its own, wake() at wake_at().
class World {
public:
    explicit World(CivilTime computer_time = VirtualClock::usual_start);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    VirtualClock clock;
    VirtualPauses pauses;
    Journal journal;
    MemoryFiles files;
    ScriptedLine line;
    RecordingDatagrams datasock;
    ScriptedStreams streams;
    RecordingNotices notices;
    RecordingSounds sounds;
    RecordingDesktop desktop;
    ScriptedTransfers transfers;
    Engine engine;

    [[nodiscard]] WeatherState& state() { return engine.state(); }
    [[nodiscard]] MainPanel& panel() { return engine.state().panel; }
    [[nodiscard]] Copy& copy() { return engine.copy(); }

    /// Starts the copy and lets two seconds pass, in which the port is opened. With a window another five belong to the
    /// splash.
    void start(const Engine::StartOptions& options = {});
    /// The same, without letting any time pass.
    void begin_start(const Engine::StartOptions& options = {});

    /// Bytes reach the line now, all at once. Nothing has handled them yet.
    void send(const Bytes& bytes);
    /// Bytes reach the line from now on, one every `pace` (1.04 ms at 9600 baud). Returns when the last one does.
    Instant send_paced(const Bytes& bytes, MonotonicClock::duration pace = std::chrono::microseconds{1040});
    /// Sends a frame and lets a tenth of a second pass, in which it is taken and worked on.
    void deliver(const Bytes& frame);
    /// Delivers a train of these readings at `station_time` (nothing: the computer's time).
    void send_train(StationReadings readings = {}, std::optional<CivilTime> station_time = std::nullopt);
    /// Delivers a train every ten seconds, at the computer's time.
    void send_trains(int count, const StationReadings& readings = {});

    /// A datagram reaches the copy's socket, if it is bound, in a moment.
    void send_datagram(const Bytes& bytes, const std::string& sender = "192.168.1.2");

    /// The device goes away, as a pulled adapter does: the port is closed, and the engine is told.
    void unplug();

    /// A person, a signal or a request does something at the copy, in a conversation of its own.
    void act(std::function<void()> what) { pauses.start(std::move(what)); }

    /// Lets virtual time pass; everything due at its last instant has happened.
    void run_for(MonotonicClock::duration duration);
    /// Lets everything scripted happen, and every wait and settling time end. Timers of a second and more run on, and
    /// do not count. False when an hour was not enough.
    bool run_until_quiet();

    /// The lines of a text file of the copy, without their CR LF; none for a missing file.
    [[nodiscard]] std::vector<std::string> lines(const std::string& name) const;
    /// The lines of the program log, without the two of the start.
    [[nodiscard]] std::vector<std::string> log() const;
    /// The value of a key in the file as it stands on the disk.
    [[nodiscard]] std::string setting(const std::string& section, const std::string& key);
};

}  // namespace nimbry::test
