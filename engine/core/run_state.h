#pragma once

#include <string>
#include <vector>

#include "engine/core/busy_flag.h"

namespace nimbry {

/// Where the program stands between its start and its exit, and what the cycle counts.
struct RunState {
    bool has_window = false;  ///< somebody can be asked; without a window a port that fails is tried again by itself
    std::string device;       ///< the serial device for this run, instead of the chosen port's; empty: by the settings
    std::string port_device;  ///< the device that was opened, or tried, last; empty in a client, which has none

    std::vector<std::string> waits;  ///< the files and flags that conversations wait for without a limit, oldest first

    int port_opening = 0;  ///< counts the openings of the serial port; a higher one ends those before it

    bool fullystarted = false;    ///< the first train has been through the cycle
    bool ProgramClosing = false;  ///< an exit has begun: no timer tick, datagram or receive event does work any more
    bool HaveError = false;       ///< an unrecoverable error was reported; it suppresses the saves of the exit
    bool DuplicateError = false;  ///< a record routine has already gone on after one error; the next is fatal
    std::string ExitWord;         ///< the end of the program log's stop line
    bool gone = false;            ///< an exit has run to its end: the program may leave its event loop
    BusyFlag savingrafs;          ///< the graph save is running
    BusyFlag tdaysaving;          ///< the save of the day's extremes is running

    bool firstrun = true;        ///< the first cycle that updates the records is still to come
    bool YFileOK = false;        ///< yesterday's file was read, and it is fresh
    bool LoneAllowed = false;    ///< a cycle has been completed: lone wind groups may be decoded
    bool grafoneminute = false;  ///< the graph tick of this minute has been
    int SaveCounter = 0;         ///< cycles since the last save of the extremes
    int SaveRounds = 0;          ///< saves since AlarmMailSent was last cleared
    int ComStateCount = 0;       ///< (kept) nothing counts it: a lost port is told by its line's own event
    int FtpStuckCount = 0;       ///< cycles in a row that found an upload under way
    int SyncWaitCount = 0;       ///< cycles in a row that found the sync listener not listening
};

}  // namespace nimbry
