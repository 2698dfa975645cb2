#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "engine/core/busy_flag.h"
#include "engine/core/run_time_error.h"
#include "engine/network/sync_progress.h"
#include "engine/network/sync_receiver.h"
#include "engine/ports/clock.h"
#include "engine/ports/streams.h"

namespace nimbry {

/// The file that is being received (file number 14); it is open while the receiver says so.
struct ReceivedFile {
    std::string name;
    std::size_t size = 0;
    std::optional<ErrorNumber> error;  ///< what writing it failed with
};

/// Where the roles of server and client stand.
struct NetworkState {
    std::string LocalIP;          ///< the own address that all sockets are bound to; empty: all of them, which is usual
    bool retrying_bind = false;   ///< the client's port was taken and is being tried again
    bool draining_later = false;  ///< datagrams wait for the busy flags to fall, and somebody will come back to them
    bool listen_failed = false;   ///< the program log has been told that the listener could not be opened
    std::optional<CivilTime> last_datagram;  ///< computer's time of the last group sent or heard
    std::string last_sender;                 ///< who sent the last one that was heard

    // `syncsock`: a listener, or one connection.
    std::unique_ptr<StreamListener> listener;
    std::shared_ptr<Stream> connection;  ///< a conversation that uses it holds it too, and sees that it is another now
    SyncReceiver receiver;
    ReceivedFile file14;
    BusyFlag HandlingIPData;          ///< the handler of its data is at work
    std::uint64_t data_arrivals = 0;  ///< (kept) pieces of a file's content that have arrived, in this run
    std::uint64_t file_requests = 0;  ///< counts the requests for files; a later one ends the answer to those before

    // A client's conversation with its server.
    bool gotnetdata = false;        ///< the first datagram has come: the conversation has been begun; once a run
    bool syncing = false;           ///< it is running; groups wait
    bool syncIPcnx = false;         ///< "cmdAcceptCNX," has come
    bool ssscnx = false;            ///< the connection is believed alive
    bool ServerStatus = false;      ///< "cmdServerIsOK," has come
    bool filedone = false;          ///< the file is complete
    bool IPInvalidFile = false;     ///< the server does not have the file
    bool FilesTransferred = false;  ///< no file has finally failed
    int serverstatustries = 0;
    int tftries = 0;
    std::string foundIP;  ///< the server's address
    SyncProgress frmSync;
    std::optional<CivilTime> sync_end;  ///< when the last synchronisation ended, by the computer's clock
    std::string sync_result;            ///< and how
};

}  // namespace nimbry
