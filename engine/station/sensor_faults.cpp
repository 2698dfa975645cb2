#include "engine/station/sensor_faults.h"

#include <array>
#include <string>
#include <string_view>

#include "engine/derived/number_text.h"
#include "engine/station/digits.h"

namespace nimbry {
namespace {

struct SensorRow {
    Sensor sensor;
    SensorFault SensorFaults::*fault;
    std::string_view log_line;
};

constexpr std::array sensors{
    SensorRow{Sensor::wind, &SensorFaults::pewgerr, " A wind sensor error occurred"},
    SensorRow{Sensor::outdoor_temperature, &SensorFaults::peoterr, " An outside temperature sensor error occurred"},
    SensorRow{Sensor::outdoor_humidity, &SensorFaults::peoherr, " An outside humidity sensor error occurred"},
    SensorRow{Sensor::indoor_humidity, &SensorFaults::peiherr, " An inside humidity sensor error occurred"},
    SensorRow{Sensor::indoor_temperature, &SensorFaults::peiterr, " An inside temperature sensor error occurred"},
    SensorRow{Sensor::barometer, &SensorFaults::pebarerr, " A barometer sensor error occurred"},
    SensorRow{Sensor::rain, &SensorFaults::pernerr, " A rainfall sensor error occurred"},
};

const SensorRow& row_of(Sensor sensor) {
    return sensors[static_cast<std::size_t>(sensor)];
}

constexpr double highest_direction = 359;
constexpr double lowest_pressure = 796, highest_pressure = 1049;
constexpr double frost = -9;

bool wind_faulty(const DigitTable<54>& table) {
    if (!table.set) return false;
    const double direction = Val(field_text(table, digits_cf::gust_direction));
    return flag_set(table, digits_cf::fault) || direction > highest_direction || direction < 0;
}

bool barometer_faulty(const WeatherState& state) {
    if (!state.comm.DigitsAF.set) return false;
    const double pressure = Val(state.readings.rdatbarometer);
    return pressure > highest_pressure || pressure < lowest_pressure;
}

bool faulty(const WeatherState& state, Sensor sensor, WindSource source) {
    const CommState& comm = state.comm;
    switch (sensor) {
        case Sensor::wind: return wind_faulty(source == WindSource::train ? comm.DigitsCF : comm.DigitsCFLone);
        case Sensor::outdoor_temperature: return fault_marked(comm.Digits9F, digits_9f::outdoor_fault);
        case Sensor::outdoor_humidity: return fault_marked(comm.Digits8F, digits_8f::outdoor_fault);
        case Sensor::indoor_humidity: return fault_marked(comm.Digits8F, digits_8f::indoor_fault);
        case Sensor::indoor_temperature: return fault_marked(comm.Digits9F, digits_9f::indoor_fault);
        case Sensor::barometer: return barometer_faulty(state);
        case Sensor::rain: return flag_set(comm.DigitsBF, digits_bf::fault);
    }
    return false;
}

template <class Panel>
auto boxes_of(Panel& panel, Sensor sensor) -> std::array<decltype(&panel.TxtTime), 5> {
    auto& text = panel.Text2;
    switch (sensor) {
        case Sensor::wind: return {&text[6], &text[3], &text[7], &panel.TxtWinDir, &panel.TxtWindChill};
        case Sensor::outdoor_temperature: return {&text[0]};
        case Sensor::outdoor_humidity: return {&text[2]};
        case Sensor::indoor_humidity: return {&text[9]};
        case Sensor::indoor_temperature: return {&text[8]};
        case Sensor::barometer: return {&text[4]};
        case Sensor::rain: return {&text[5]};
    }
    return {};
}

void show_error(WeatherState& state, Sensor sensor) {
    for (Box* box : boxes_of(state.panel, sensor)) {
        if (box == nullptr) continue;
        box->text = "Error";
        box->fore = colours::red;
    }
    if (sensor != Sensor::wind) return;
    Readings& readings = state.readings;
    for (std::string* word : {&readings.gwcompaf, &readings.awcompaf, &readings.gwcompas, &readings.awcompas})
        word->clear();
    state.log_fields.logwindas = "0";
    state.log_fields.logwindgs = "0";
}

bool silenced_by_frost(const WeatherState& state, Sensor sensor) {
    return sensor == Sensor::outdoor_humidity && state.settings.CCPop && Val(state.readings.rawostemp) < frost;
}

void report(Copy& copy, const SensorRow& row) {
    WeatherState& state = copy.state;
    if (!silenced_by_frost(state, row.sensor)) {
        SensorFault& fault = state.sensors.*row.fault;
        if (!fault.once) copy.log.event(row.log_line);
        fault.once = true;
        if (!state.settings.ErrorPop) copy.ports.notices.show_window("NimbrySensor");
    }
    show_error(state, row.sensor);
}

}  // namespace

bool sensor_sound(Copy& copy, Sensor sensor, WindSource source) {
    const SensorRow& row = row_of(sensor);
    SensorFaults& faults = copy.state.sensors;
    SensorFault& fault = faults.*row.fault;
    faults.sensorsok = true;
    if (!copy.state.run.fullystarted) return true;
    if (fault.verdict) {
        faults.sensorsok = *fault.verdict || fault.raised;
        return *fault.verdict;
    }

    const bool sound = !faulty(copy.state, sensor, source);
    fault.verdict = sound;
    if (sound) {
        fault.raised = false;
        fault.failed = false;
    } else if (!fault.raised) {
        fault.raised = true;
    } else {
        fault.raised = false;
        fault.failed = true;
        faults.sensorsok = false;
        report(copy, row);
    }
    return sound;
}

bool both_winds_sound(Copy& copy) {
    return sensor_sound(copy, Sensor::wind) && !wind_faulty(copy.state.comm.DigitsCFLone);
}

void begin_train(SensorFaults& faults) {
    for (const SensorRow& row : sensors) (faults.*row.fault).verdict.reset();
}

void begin_lone_wind(SensorFaults& faults) {
    faults.pewgerr.verdict.reset();
}

void clear_once_flags(SensorFaults& faults) {
    for (const SensorRow& row : sensors) (faults.*row.fault).once = false;
}

void clear_fault_colours(MainPanel& panel) {
    const auto clear = [](Box& box) {
        if (box.fore == colours::red) box.fore = colours::black;
    };
    for (const SensorRow& row : sensors) {
        for (Box* box : boxes_of(panel, row.sensor)) {
            if (box != nullptr) clear(*box);
        }
    }
    clear(panel.Text2[1]);  // the dew point has no sensor of its own
}

}  // namespace nimbry
