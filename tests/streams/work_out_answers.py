#!/usr/bin/env python3
"""Works the golden answers of the weather streams out a second time, from their bytes alone and in another language.

    work_out_answers.py FOLDER

Takes every NAME.stream of the folder that is made of whole, good frames, works out what a copy with the settings of a
first run shows of it (docs/formats/stream.md), and compares that with NAME.events line by line. Left out are the lines
of the status label and of notices, which tell of the program and not of the weather, and those of alarms: they are
worked out by work_out_alarms.py.
"""
import datetime
import math
import pathlib
import sys

WEATHER = {"quiet_afternoon", "gale", "sensors_fail_and_return", "rain_counter_reset", "midnight",
           "leap_day_of_a_common_year", "leap_day_of_a_leap_year", "alarms"}
SPANS = [("8F", 0, 35), ("9F", 35, 34), ("AF", 69, 31), ("BF", 100, 14), ("CF", 114, 27)]
MONTHS = [""] + "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split() + [""] * 3


def rounded(value, digits):
    """Ties go to the even digit of the product."""
    return round(value * 10 ** digits) / 10 ** digits


def text_of(number):
    return f"{number + 0.0:.15g}"


def value_of(text):
    """The number that a text begins with; 0 when it begins with none."""
    number = ""
    for c in text.strip():
        if c.isdigit() or (c in "+-" and not number) or (c == "." and "." not in number):
            number += c
        else:
            break
    return float(number) if any(c.isdigit() for c in number) else 0.0


class Group:
    """The digits of a group, counted from 1."""

    def __init__(self, data):
        self.hex = data.hex().upper()

    def __call__(self, *places):
        return "".join(self.hex[place - 1] for place in places)

    def value(self, place):
        return int(self.hex[place - 1], 16)


def good_frame(data):
    spans = SPANS if len(data) == 141 else [("CF", 0, 27)] if len(data) == 27 else []
    return bool(spans) and all(
        data[first] == int(tag, 16) and sum(data[first:first + count - 1]) % 256 == data[first + count - 1]
        for tag, first, count in spans)


def read(path):
    """The computer's clock at the start and the frames as (milliseconds, bytes); None for a stream of another kind."""
    head, frames, in_head = {}, [], True
    for number, line in enumerate(path.read_text().splitlines()):
        if number == 0 or line.startswith("#"):
            continue
        if in_head:
            if not line:
                in_head = False
                continue
            name, value = line.split(": ", 1)
            head[name] = value
        elif line:
            at, data = line.split(" ", 1)
            if data.startswith("!") or "pace" in head:
                return None
            frames.append((round(float(at)), bytes.fromhex(data.replace(" ", ""))))
    if not all(good_frame(data) for _, data in frames):
        return None
    return datetime.datetime.fromisoformat(head["clock"]), frames


class Copy:
    """What a copy makes of the frames, as lines "   1.060  what"."""

    def __init__(self, clock):
        self.clock, self.lines, self.shown = clock, [], {}
        self.trains = self.lone = 0
        self.started = False
        self.strikes, self.sound, self.logged = {}, {}, set()
        self.temperature = None
        self.base = self.before = None
        self.minute_done = self.midnight_done = False
        self.hour_counter, self.hour = None, []

    def tell(self, what):
        self.news.append(what)

    def show(self, what, text):
        self.now_shown[what] = text

    def tested(self, sensor, faulty, words, log):
        """The two strikes. True when the reading may be used."""
        if not faulty:
            self.strikes[sensor] = False
        elif not self.strikes.get(sensor):
            self.strikes[sensor] = True
        else:
            self.strikes[sensor] = False
            for word in words:
                self.show(word, "Error")
            self.after.append("window: NimbrySensor")
            if sensor not in self.logged:
                self.logged.add(sensor)
                self.log.append(f"log: {self.stamp()} {log} sensor error occurred")
        self.sound[sensor] = not faulty
        return not faulty

    def stamp(self):
        return self.time.strftime("%d ") + MONTHS[self.time.month] + self.time.strftime(" %Y %H:%M:%S")

    def frame(self, at, data):
        self.news, self.after, self.midnight, self.log = [], [], [], []
        self.now_shown = dict(self.shown)
        lone = len(data) == 27
        if lone and not self.started:
            self.tell("refused: before the first train")
        elif lone:
            self.lone += 1
            wind = Group(data)
            self.tell("lone wind: " + self.wind_words(wind))
            self.wind(wind, False)
        else:
            self.trains += 1
            self.train([Group(data[first:first + count]) for _, first, count in SPANS])
        for what in TOLD:
            if self.now_shown.get(what, "") != self.shown.get(what, ""):
                text = self.now_shown[what].strip()
                self.tell(text if what == "battery" else f"{what} {text}")
        self.shown = self.now_shown
        self.news += self.after + self.midnight + self.log
        self.lines += [f"{(at + (30 if lone else 60)) / 1000:8.3f}  {line}" for line in self.news]

    def wind_words(self, w):
        return (f"gust {w(6, 3)}.{w(4)} m/s from {w(7, 8, 5)}, "
                f"average {w(12, 9)}.{w(10)} m/s from {w(13, 14, 11)}")

    def train(self, groups):
        clock, temperature, pressure, rain, wind = groups
        sign = "-" if temperature.value(36) & 8 else "+"
        outside = f"{temperature.value(36) & 7}{temperature(33)}.{temperature(34)}"
        inside_sign = "-" if temperature.value(6) & 8 else "+"
        inside = f"{temperature.value(6) & 7}{temperature(3)}.{temperature(4)}"
        day, month = text_of(value_of(clock(9, 10))), MONTHS[clock.value(12)]
        self.tell(f"train: {clock(7, 8)}:{clock(5, 6)}:{clock(3, 4)} {day} {month}, "
                  f"outside {sign}{outside} C {clock(41, 42)} %, inside {inside_sign}{inside} C {clock(17, 18)} %, "
                  f"{pressure(12, 9, 10, 7)} hPa trend {pressure(13)} forecast {pressure(14)}, "
                  f"rain {rain.value(6)}{rain(3, 4)} mm/h of {rain(13, 14, 11, 12)} mm, " + self.wind_words(wind))
        try:
            self.time = datetime.datetime(self.clock.year, clock.value(12), int(clock(9, 10)), int(clock(7, 8)),
                                          int(clock(5, 6)), int(clock(3, 4)))
        except ValueError:
            self.tell("refused: an impossible date")
            return
        if not self.started:
            self.started = True
            return
        self.humidity(clock)
        self.temperatures(temperature, sign, outside, inside_sign, inside)
        self.pressure(pressure)
        self.rain_rate(rain)
        self.wind(wind, True)
        self.rain(rain)

    def humidity(self, g):
        if self.tested("humidity", g(41) == "E", ["humidity"], "An outside humidity"):
            self.percent = value_of(g(41, 42))
            over = g.value(65) & 1 and self.percent == 97
            self.saturation = 100 if over else self.percent
            self.show("humidity", "100 %" if over else g(41, 42) + " %")
        if self.tested("indoor humidity", g(17) == "E", ["indoor humidity"], "An inside humidity"):
            self.show("indoor humidity", g(17, 18) + " %")

    def temperatures(self, g, sign, outside, inside_sign, inside):
        if self.tested("temperature", g(33) == "E", ["temperature"], "An outside temperature"):
            self.temperature = value_of(sign + outside)
            self.show("temperature", f"{sign}{text_of(abs(self.temperature))} °C")
            self.heat_index()
        if self.tested("indoor temperature", g(3) == "E", ["indoor temperature"], "An inside temperature"):
            self.show("indoor temperature", f"{inside_sign}{text_of(abs(value_of(inside)))} °C")

    def heat_index(self):
        if self.temperature < 20:
            self.show("heat index", "n.a.")
        elif self.sound["humidity"]:
            t, r = self.temperature * 9 / 5 + 32, self.percent
            terms = [16.923, 0.185212 * t, 5.37941 * r, -0.100254 * t * r, 0.00941695 * t ** 2, 0.00728898 * r ** 2,
                     0.000345372 * t ** 2 * r, -0.000814971 * t * r ** 2, 0.0000102102 * t ** 2 * r ** 2,
                     -0.000038646 * t ** 3, 0.0000291583 * r ** 3, 0.00000142721 * t ** 3 * r,
                     0.000000197483 * t * r ** 3, -0.0000000218429 * t ** 3 * r ** 2,
                     0.000000000843296 * t ** 2 * r ** 3, -0.0000000000481975 * t ** 3 * r ** 3]
            fahrenheit = rounded(math.fsum(terms), 1)
            self.show("heat index", self.signed(rounded((fahrenheit - 32) * 5 / 9, 1)))

    @staticmethod
    def signed(value, sign=None):
        """The sign may have been taken before the rounding."""
        return f"{sign or ('-' if value < 0 else '+')}{text_of(abs(value))} °C"

    def pressure(self, g):
        hpa = value_of(g(12, 9, 10, 7))
        if self.tested("barometer", hpa > 1049 or hpa < 796, ["barometer"], "A barometer"):
            self.hpa = hpa
            self.show("barometer", f"{text_of(hpa)} mB")
            trend = {"1": "Rising", "2": "Steady", "4": "Falling"}.get(g(13))
            if trend:
                self.show("trend", trend)
        if self.sound["temperature"] and self.sound["humidity"]:
            self.dew_point()
        cold = self.sound["temperature"] and self.temperature <= 1
        wet = "Storm" if g(13) == "4" else "Snow/Sleet" if cold else "Rain"
        forecast = {"1": "Sunny", "2": "Cloudy", "4": "Partly Cloudy", "8": wet}.get(g(14))
        if forecast:
            self.show("forecast", forecast)

    def dew_point(self):
        t = self.temperature
        vapour = self.saturation * 6.11 * 10 ** (7.5 * t / (237.7 + t)) / 100
        log = math.log(vapour)
        exact = (237.7 * log - 430.22) / (19.08 - log)
        dew = rounded(exact, 1)
        self.show("dew point", self.signed(dew, "-" if exact < 0 else "+"))
        gamma, delta = 0.00066 * self.hpa, 4098 * vapour / (dew + 237.7) ** 2
        self.show("wet bulb", self.signed(rounded((gamma * t + delta * dew) / (gamma + delta), 1)))
        metres = 125 * (t - dew)
        self.show("cloud base", f"{math.trunc(metres)} meters. ({math.trunc(metres * 3.28)} feet)")

    def rain_rate(self, g):
        if self.tested("rain", g.value(25) & 8, ["rain rate"], "A rainfall"):
            self.show("rain rate", f"{text_of(100 * g.value(6) + value_of(g(3, 4)))} mm/hour")
        self.show("rain counter", text_of(value_of(g(13, 14, 11, 12))) + " mm")

    def wind(self, g, train):
        if train and self.started:
            low = bool(g.value(47) & 8)
            if low or "battery" in self.shown:
                self.show("battery", "the battery is low" if low else "the battery is not low")
        words = ["gust", "gust direction", "average wind", "wind direction", "wind chill"]
        if not self.tested("wind", g.value(51) & 12 or value_of(g(7, 8, 5)) > 359, words, "A wind"):
            return
        gust, average = rounded(value_of(g(6, 3) + "." + g(4)) * 3.6, 1), value_of(g(12, 9) + "." + g(10))
        shown_average = rounded(average * 3.6, 1)
        self.show("gust", "Calm" if gust < 0.2 else f"{text_of(gust)} km/h")
        self.show("average wind", "Calm" if shown_average < 0.2 else f"{text_of(shown_average)} km/h")
        self.show("gust direction", f"Gust {text_of(value_of(g(7, 8, 5)))}°")
        self.show("wind direction", f"Avg. {text_of(value_of(g(13, 14, 11)))}°")
        record = rounded(value_of(g(18, 15) + "." + g(16)) * 3.6, 1)
        self.show("record gust", f"{text_of(record)} km/h, {g(19, 20, 17)}° at {g(23, 24)}:{g(21, 22)} on "
                                 f"{g(25, 26)} {MONTHS[g.value(28)]}")
        if self.temperature is None or not self.sound["temperature"]:
            return
        t, power = self.temperature, (average * 3.6 if shown_average >= 0.2 else 0.0) ** 0.16
        chill = min(t, 13.12 + 0.6215 * t - 11.37 * power + 0.3965 * t * power)
        self.show("wind chill", self.signed(rounded(chill, 1), "-" if chill < 0 else "+"))

    def rain(self, g):
        counter = value_of(g(13, 14, 11, 12))
        if self.base is None:
            self.base = counter
        elif self.base > counter and counter < self.before:
            self.base = counter + (self.before - self.base)
        self.before = counter
        total = counter - self.base
        self.show("rain of the day", "nil" if total == 0 else f"{text_of(total)} mm")

        if not 30 <= self.time.second <= 39:
            self.minute_done = False
        elif not self.minute_done:
            self.minute_done = True
            if self.hour_counter is None:
                self.show("rain of the last hour", "0 mm")
            else:
                since = counter if counter < self.hour_counter else counter - self.hour_counter
                self.hour = (self.hour + [since])[-60:]
                # The blank in front is told apart from the first text, which has none.
                self.show("rain of the last hour", f" {text_of(sum(self.hour))} mm")
            self.hour_counter = counter

        if self.time.strftime("%H:%M") != "00:00":
            self.midnight_done = False
        elif not self.midnight_done:
            self.midnight_done = True
            self.midnight += [f"rnslm.dat: {self.stamp()}", f"rnslm.dat: {text_of(counter)}"]


TOLD = ["temperature", "humidity", "indoor temperature", "indoor humidity", "barometer", "trend", "forecast", "dew point",
        "heat index", "rain rate", "gust", "gust direction", "average wind", "wind direction", "wind chill",
        "record gust", "rain counter", "rain of the day", "rain of the last hour", "wet bulb", "cloud base", "battery"]


def is_of_alarms(line):
    return line.endswith(" in alarm") or line[10:].startswith(("alarm: ", "an alarm mail", "sound: "))


def main(folder):
    seen, wrong = set(), 0
    for path in sorted(pathlib.Path(folder).glob("*.stream")):
        stream = read(path)
        if stream is None:
            continue
        seen.add(path.stem)
        copy = Copy(stream[0])
        for at, data in stream[1]:
            copy.frame(at, data)
        copy.lines.append(f"in all: {copy.trains} trains, {copy.lone} lone, 0 bytes thrown away")
        answer = [line for line in path.with_suffix(".events").read_text().splitlines()[1:]
                  if not any(f"  {kind}: " in line for kind in ("status", "notice")) and not is_of_alarms(line)]
        for number in range(max(len(answer), len(copy.lines))):
            got = answer[number] if number < len(answer) else "(nothing)"
            want = copy.lines[number] if number < len(copy.lines) else "(nothing)"
            if got != want:
                print(f"{path.stem}: the answer says\n  {got}\nand it works out as\n  {want}")
                wrong += 1
                break
        else:
            print(f"{path.stem}: {len(answer)} lines")
    missing = WEATHER - seen
    if missing:
        print("not worked out:", ", ".join(sorted(missing)))
    return 1 if wrong or missing else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
