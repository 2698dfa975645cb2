#pragma once

#include "engine/alarms/alarm_state.h"
#include "engine/core/main_settings.h"
#include "engine/core/run_state.h"
#include "engine/derived/units.h"
#include "engine/displays/additional_panel.h"
#include "engine/displays/big_display.h"
#include "engine/displays/main_menu.h"
#include "engine/displays/main_panel.h"
#include "engine/displays/main_window.h"
#include "engine/displays/notice_list.h"
#include "engine/displays/setup_windows.h"
#include "engine/displays/status_message.h"
#include "engine/graphs/graph_state.h"
#include "engine/network/network_state.h"
#include "engine/publish/publish_state.h"
#include "engine/records/log_fields.h"
#include "engine/records/rain_state.h"
#include "engine/records/records_state.h"
#include "engine/reports/reports_state.h"
#include "engine/station/comm_state.h"
#include "engine/station/readings.h"
#include "engine/station/sensor_state.h"
#include "engine/sun/sun_state.h"

namespace nimbry {

/// All running state of one copy, made of the rooms' own structs. Owned by the Engine (core/engine.h) for the life of
/// the program and handed to the routines by reference; there is no other state.
struct WeatherState {
    MainSettings settings;         ///< the `Main` keys in force
    Units units;                   ///< what displays go through
    RunState run;                  ///< start, exit and cycle
    CommState comm;                ///< the line and the frame in hand
    Readings readings;             ///< the current weather
    SensorFaults sensors;          ///< the fault tests' memory
    RainState rain;                ///< rain of the day and of the last hour
    RecordsState records;          ///< extremes of the day, almanac, changeover
    SunState sun;                  ///< the sun's times of the day
    LogFields log_fields;          ///< the weather log's columns
    MainPanel panel;               ///< the main window's boxes
    MainMenu menu;                 ///< its menu and buttons
    AdditionalPanel additional;    ///< the boxes of the additional data window
    BigDisplay big;                ///< the large-type window
    MainWindow window;             ///< the main window as a whole
    SetupWindows setup;            ///< the setup windows that a cycle takes notice of
    StatusMessage status_message;  ///< the small status window
    NoticeList notices;            ///< what was shown last
    AlarmState alarms;             ///< what the threshold alarms have raised
    PublishState publish;          ///< what goes out, and what of it is under way
    ReportsState reports;          ///< the generation of pages, mails and small files
    NetworkState network;          ///< server and client
    GraphState graphs;             ///< the day of samples and what is drawn of it

    bool havegrafdata = false;  ///< the graph store is in use: the status label no longer says "Program Starting"
};

}  // namespace nimbry
