#include "engine/network/client_sync.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "engine/core/file_steps.h"
#include "engine/core/initprog.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_file.h"
#include "engine/network/client_menus.h"
#include "engine/network/first_weather_day.h"
#include "engine/network/rain_history.h"
#include "engine/network/start_network.h"
#include "engine/network/sync_settings.h"
#include "engine/network/syncsock.h"
#include "engine/records/almanac_file.h"
#include "engine/records/day_files.h"
#include "engine/setup/units_dialog.h"

namespace nimbry {

namespace {

using namespace std::chrono_literals;

// Seconds; a wait is over when more than that has passed.
constexpr double connection_limit = 20;
constexpr double status_limit = 5;
constexpr int status_polls = 7;

struct SyncFile {
    SyncCommand request;
    std::string_view temporary;
    std::string_view name;
    double limit;          ///< seconds until an attempt counts as unanswered
    int silent_attempts;   ///< the file has failed when the last of so many attempts was not answered
    int invalid_attempts;  ///< or was answered with "no such file"
    std::string_view requesting, received, failed;
};

constexpr std::array sync_files{
    SyncFile{SyncCommand::RequestSyncFile, tempsync_cfg, tempsync_cfg, 10, 4, 4,
             "Client is requesting configuration data", "Client has received configuration data",
             "Client failed to receive configuration data"},
    // The largest one, so the server has more time for it.
    SyncFile{SyncCommand::RequestGraphFile, "grafdata.tmp", graph_file, 20, 5, 4, "Client is requesting the graph data",
             "Client has received the graph data", "Client failed to receive the graph data"},
    SyncFile{SyncCommand::RequestTdayFile, "nimbrTDay.tmp", today_file, 10, 4, 4,
             "Client is requesting today's extremes", "Client has received today's extremes",
             "Client failed to receive today's extremes"},
    SyncFile{SyncCommand::RequestYdayFile, "nimbrYDay.tmp", yesterday_file, 10, 4, 4,
             "Client is requesting yesterday's extremes", "Client has received yesterday's extremes",
             "Client failed to receive yesterday's extremes"},
    SyncFile{SyncCommand::RequestRainLH, "rainlh.tmp", rain_history_file, 10, 4, 4,
             "Client is requesting rainfall in last hour data", "Client has received rainfall in last hour data",
             "Client failed to receive rainfall in last hour data"},
    SyncFile{SyncCommand::RequestAlmanac, "nbextreme.tmp", almanac_log, 10, 4, 4,
             "Client is requesting the almanac data", "Client has received the almanac data",
             "Client failed to receive the almanac data"},
};

/// The server has gone.
struct ConnectionLost {};

enum class Attempt { received, unanswered, invalid };

/// The file that is being received, as long as it is. Unless it is kept it is deleted, on every way out.
class TemporaryFile {
public:
    TemporaryFile(Copy& copy, std::string_view name) : copy_(copy), name_(name) {
        // What an earlier one left must not stand behind a shorter content.
        require(copy.ports.files.rewrite(name_, ""));
        copy.state.network.file14 = {name_, 0, std::nullopt};
        copy.state.network.receiver.open_file();
    }
    ~TemporaryFile() {
        copy_.state.network.receiver.close_file();
        if (!kept_) copy_.ports.files.remove(name_);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void keep() { kept_ = true; }

private:
    Copy& copy_;
    std::string name_;
    bool kept_ = false;
};

/// The whole conversation, in its order.
class Synchronisation {
public:
    explicit Synchronisation(Copy& copy) : copy_(copy), network_(copy.state.network) {}

    void run(const std::string& server) {
        begin(server);
        if (!connect()) {
            return give_up("no connection", "Nimbry was unable to establish a connection\r\nto a Nimbry server");
        }
        if (!server_is_free()) {
            return give_up("no answer", "Nimbry was unable to get a response from\r\nthe Nimbry server");
        }
        line("Client got a server OK response");
        line("Client is requesting files from server");
        for (const SyncFile& file : sync_files) fetch(file);
        finish();
    }

    void lose_connection() {
        network_.ssscnx = false;
        line("Client has lost the connection to the server");
        hang_up();
        end("connection lost");
    }

    void fail(ErrorNumber error) {
        const std::string number = numtext(static_cast<int>(error));
        copy_.ports.notices.balloon({.title = "Synchronization Error",
                                     .text = "There was an error synchronising files with the server.\r\n"
                                             "Error number: " +
                                             number + "\r\n" + std::string(description(error)) +
                                             "\r\nLocal data (if any) will be used",
                                     .closes_after = 10s});
        copy_.ports.notices.restore_main_window();
        hang_up();
        end("error " + number);
        close_sync_window(network_.frmSync);
    }

private:
    void begin(const std::string& server) {
        network_.syncing = true;
        network_.FilesTransferred = true;
        open_sync_window(copy_);
        line("A Nimbry server was detected at " + server);
        network_.foundIP = server;
        copy_.ports.datasock.close();
        pause(20ms);
        network_.gotnetdata = true;
        bind_client_port(copy_);
    }

    bool connect() {
        network_.syncIPcnx = false;
        if (syncstate(network_) != StreamState::connected) {
            line("Client is requesting a connection");
            take_connection(network_,
                            copy_.ports.streams.connect(trimmed(network_.foundIP), sync_port, network_.LocalIP));
        }
        connection_ = network_.connection;
        const double darvTime = now();
        wait([&] { return network_.syncIPcnx || is_over(darvTime, connection_limit); });
        return network_.syncIPcnx;
    }

    bool server_is_free() {
        network_.ssscnx = true;
        line("Client and Server have established a connection");
        network_.ServerStatus = false;
        network_.serverstatustries = 0;
        line("Client is requesting the server status");
        while (network_.serverstatustries < status_polls) {
            send(SyncCommand::ServerStatus);
            pause(10ms);
            const double TempStartTime = now();
            bool silent = false;
            wait([&] {
                silent = is_over(TempStartTime, status_limit);
                return network_.ServerStatus || silent || is_lost();
            });
            if (network_.ServerStatus) return true;
            if (!silent) throw ConnectionLost{};
            ++network_.serverstatustries;
            line("Client is waiting for a server status response");
        }
        return false;
    }

    void fetch(const SyncFile& file) {
        line(file.requesting);
        network_.tftries = 0;
        for (;;) {
            line("Attempt # " + numtext(network_.tftries + 1));
            const Attempt outcome = attempt(file);
            if (outcome == Attempt::received) return read_in(file);
            if (outcome == Attempt::invalid && may_be_missing(file)) return do_without(file);
            ++network_.tftries;
            if (network_.tftries >= (outcome == Attempt::invalid ? file.invalid_attempts : file.silent_attempts)) break;
            send(SyncCommand::filended);
            pause(100ms);
        }
        network_.FilesTransferred = false;
        line(file.failed);
    }

    /// Asks once. A file that has come whole has its final name afterwards.
    Attempt attempt(const SyncFile& file) {
        // A reply to an earlier request must not end this one.
        network_.filedone = false;
        network_.IPInvalidFile = false;
        TemporaryFile temporary(copy_, file.temporary);
        send(file.request);
        const Attempt outcome = wait_for_file(file.limit);
        if (outcome == Attempt::received) {
            if (file.name != file.temporary)
                replace_by(copy_.ports.files, std::string(file.temporary), std::string(file.name));
            temporary.keep();
        }
        network_.IPInvalidFile = false;
        return outcome;
    }

    Attempt wait_for_file(double limit) {
        const double asked = now();
        std::optional<Attempt> outcome;
        wait([&] {
            if (network_.IPInvalidFile) {
                outcome = Attempt::invalid;
            } else if (is_over(asked, limit)) {
                outcome = Attempt::unanswered;
            } else if (network_.filedone && !is_lost()) {
                outcome = Attempt::received;
            }
            return outcome || is_lost() || network_.file14.error;
        });
        if (network_.file14.error) throw RunTimeError{*network_.file14.error};
        if (!outcome) throw ConnectionLost{};
        return *outcome;
    }

    void read_in(const SyncFile& file) {
        line(file.received);
        const bool settings = file.request == SyncCommand::RequestSyncFile;
        if (!settings && file.request != SyncCommand::RequestRainLH) return;
        std::string text;
        require(copy_.ports.files.read(std::string(file.name), text));
        if (settings)
            take_settings(text);
        else
            read_rain_history(text, copy_.state.rain);
    }

    void take_settings(const std::string& text) {
        store_sync_settings(copy_, text);
        disable_client_menus(copy_.state.menu);
        copy_.ini.SaveFlag("FTP", "LocalSave", false);
    }

    [[nodiscard]] bool may_be_missing(const SyncFile& file) const {
        return file.request == SyncCommand::RequestAlmanac &&
               almanac_may_be_archived(copy_.state.settings, copy_.ports.clock.computer_time());
    }

    void do_without(const SyncFile& file) {
        remove_if_there(copy_.ports.files, std::string(file.name));
        line("No almanac exists yet as it has been archived");
    }

    void finish() {
        pause(100ms);
        send(SyncCommand::ResetServerSocket);
        say_goodbye();
        applyunits(copy_);
        line("");
        if (network_.FilesTransferred) {
            line("Synchronisation with the Nimbry server completed");
            line("All files have been transferred successfully");
        } else {
            line("Some remote files could not be transferred.");
            line("Local data will be used if available");
        }
        line("Nimbry client is now starting ....");
        network_.frmSync.closes_itself = true;
        end(network_.FilesTransferred ? "all files" : "some files failed");
        initprog(copy_);
    }

    /// The server must still get the last command.
    void say_goodbye() {
        connection_->close();
        copy_.ports.pauses.wait_until([&] { return connection_->unsent() == 0; }, 1s);
        if (is_current()) network_.connection.reset();
    }

    void hang_up() {
        if (is_current()) close_syncsock(copy_);
    }

    void give_up(std::string_view result, std::string_view reason) {
        copy_.ports.notices.box(
            {.title = "Nimbry",
             .text = std::string(reason) + " to synchronise the files.\r\nLocal data (if any) will be used"});
        hang_up();
        end(result);
        close_sync_window(network_.frmSync);
        copy_.ports.notices.restore_main_window();
    }

    void end(std::string_view result) {
        network_.syncing = false;
        network_.FilesTransferred = false;
        network_.sync_end = copy_.ports.clock.computer_time();
        network_.sync_result = result;
    }

    void line(std::string_view text) { sync_line(copy_, text); }
    void send(SyncCommand command) { SendData(copy_, connection_, text_of(command)); }
    void pause(Milliseconds how_long) { copy_.ports.pauses.pause(how_long); }
    void wait(const std::function<bool()>& condition) { copy_.ports.pauses.wait_until(condition); }

    /// A copy that has taken another role meanwhile may have a listener by now, and another connection.
    [[nodiscard]] bool is_current() const { return connection_ == network_.connection; }
    [[nodiscard]] bool is_lost() const {
        return !is_current() || syncstate(network_) == StreamState::closed || !network_.ssscnx;
    }

    /// Seconds since midnight. Kept on purpose: a wait that spans midnight does not time out.
    [[nodiscard]] double now() const { return copy_.ports.clock.seconds_of_day(); }
    [[nodiscard]] bool is_over(double since, double limit) const { return now() - since > limit; }

    Copy& copy_;
    NetworkState& network_;
    std::shared_ptr<Stream> connection_;  // to the server
};

}  // namespace

void synchronise(Copy& copy, const std::string& server) {
    Synchronisation synchronisation(copy);
    std::optional<ErrorNumber> error;
    bool lost = false;
    try {
        synchronisation.run(server);
    } catch (const ConnectionLost&) {
        lost = true;
    } catch (const RunTimeError& failure) {
        error = failure.number;
    }
    if (lost) synchronisation.lose_connection();
    if (error) synchronisation.fail(*error);
}

}  // namespace nimbry
