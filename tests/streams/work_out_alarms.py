#!/usr/bin/env python3
"""Works the alarms of the streams out a second time, from their bytes, the thresholds beside them, and in another language.

    work_out_alarms.py FOLDER

For every NAME.stream of the folder with a NAME.ini: colours, sentence, sounds and mails of its alarms, compared with the
lines of NAME.events that tell of them. Such a stream has fewer trains than there are between two saves.
"""
import configparser
import math
import pathlib
import struct
import sys

from work_out_answers import Group, TOLD, is_of_alarms, read, rounded

# threshold, switch, sign of a breach, reading, phrase of its clause; in the order in which a train asks
CHECKS = [("AHumHi", "fAOuHumHi", 1, "humidity", "humidity is above"),
          ("AHumLo", "fAOuHumLo", -1, "humidity", "humidity is below"),
          ("ATempHi", "fAOuTempHi", 1, "temperature", "outside temperature is above"),
          ("ATempLo", "fAOuTempLo", -1, "temperature", "outside temperature is below"),
          ("AItempHi", "fAInTempHi", 1, "indoor temperature", "indoor temperature is above"),
          ("AItempLo", "fAInTempLo", -1, "indoor temperature", "indoor temperature is below"),
          ("ABarHi", "fABarHi", 1, "barometer", "barometric pressure is above"),
          ("ABarLo", "fABarLo", -1, "barometer", "barometric pressure is below"),
          ("ADewHi", "fADewHi", 1, "dew point", "dew point is above"),
          ("ADewLo", "fADewLo", -1, "dew point", "dew point is below"),
          (None, "fADewCu", 0, "dew point", "the temperature and dew point are equal"),
          ("ARainHi", "fARainHi", 1, "rain rate", "peak rainfall rate is above"),
          ("AWindHi", "fAWindHi", 1, "gust", "wind speed is above"),
          ("ARainAm", "fARainAm", 1, "rain of the day", "rainfall amount since")]
STANDS_MS = 27000


def single(number):
    return struct.unpack("f", struct.pack("f", number))[0]


def dew_point(celsius, percent):
    vapour = percent * 6.11 * 10 ** (7.5 * celsius / (237.7 + celsius)) / 100
    logarithm = math.log(vapour)
    return rounded((237.7 * logarithm - 430.22) / (19.08 - logarithm), 1)


def tenths(group, first, *others):
    size = ((group.value(first) & 7) * 100 + int(group(*others))) / 10
    return -size if group.value(first) & 8 else size


def wind(group):
    return {"gust": int(group(6, 3, 4)) / 10} if not group.value(51) & 12 else {}


def readings(data, base):
    """What the sound sensors of a train say."""
    group_8f, group_9f, group_af, group_bf, group_cf = (Group(data[first:]) for first in (0, 35, 69, 100, 114))
    said = wind(group_cf)
    if group_8f(41) != "E":
        said["humidity"] = int(group_8f(41, 42))
    if group_9f(33) != "E":
        said["temperature"] = tenths(group_9f, 36, 33, 34)
    if group_9f(3) != "E":
        said["indoor temperature"] = tenths(group_9f, 6, 3, 4)
    if group_af(7) != "E":
        said["barometer"] = int(group_af(12, 9, 10, 7))
    if "humidity" in said and "temperature" in said:
        over_range = said["humidity"] == 97 and group_8f.value(65) & 1
        said["dew point"] = dew_point(said["temperature"], 100 if over_range else said["humidity"])
    if not group_bf.value(25) & 8:
        said["rain rate"] = group_bf.value(6) * 100 + int(group_bf(3, 4))
        said["rain of the day"] = int(group_bf(13, 14, 11, 12)) - base
    return said


class Alarms:
    def __init__(self, settings):
        self.settings, self.lines = settings, []
        self.sentence, self.red, self.ends, self.mailed = "", set(), None, False

    def tell(self, at, what):
        self.lines.append(f"{at // 1000:4d}.{at % 1000:03d}  {what}")

    def on(self, key):
        return self.settings.get(key) == "True"

    def until(self, at):
        if self.ends is None or self.ends > at:
            return
        for reading in sorted(self.red, key=TOLD.index):
            self.tell(self.ends, f"{reading} no longer in alarm")
        if self.on("fASound"):
            self.tell(self.ends, "sound: Nimbry.WAV, times 1")
        self.red, self.ends = set(), None

    def in_breach(self, said, threshold, sign, reading):
        if reading not in said:
            return False
        if threshold is None:
            return single(said[reading]) >= single(said["temperature"])
        limit = single(float(self.settings[threshold].replace(",", ".")))
        return sign * single(said[reading]) > sign * limit

    def hear(self, at, said, is_train):
        self.until(at)
        red, sentence, sounds = set(self.red), self.sentence, 0
        for threshold, switch, sign, reading, phrase in CHECKS:
            if not self.on(switch) or not self.in_breach(said, threshold, sign, reading):
                continue
            sounds += 1
            self.red.add(reading)
            self.ends = self.ends or at + STANDS_MS
            clause = phrase if threshold is None else f"the {phrase} the alarm threshold"
            if threshold == "ARainAm":
                clause = f"the {phrase} 9.00am is above the alarm threshold"
            self.sentence = f"{self.sentence} and {clause}" if phrase in self.sentence else clause
        for reading in sorted(self.red - red, key=TOLD.index):
            self.tell(at, f"{reading} in alarm")
        if self.sentence != sentence:
            self.tell(at, f"alarm: {self.sentence}")
        if is_train and self.sentence and not self.mailed and self.on("fAMail"):
            self.mailed = True
            self.tell(at, "an alarm mail")
        if sounds and self.on("fASound"):
            self.tell(at, f"sound: Nimbry.WAV, times {sounds}")


def worked_out(path):
    ini = configparser.ConfigParser()
    ini.optionxform = str
    ini.read(path.with_suffix(".ini"))
    alarms = Alarms(dict(ini["Alarms"]))
    trains, base = 0, None
    for at, data in read(path)[1]:
        if len(data) == 141:
            trains += 1
            if trains == 2:  # the first that is decoded
                base = int(Group(data[100:])(13, 14, 11, 12))
            if trains > 1:
                alarms.hear(at + 60, readings(data, base), True)
        elif trains > 1:
            alarms.hear(at + 30, wind(Group(data)), False)
    alarms.until(math.inf)
    return alarms.lines


def main(folder):
    wrong = 0
    for path in sorted(pathlib.Path(folder).glob("*.stream")):
        if not path.with_suffix(".ini").exists():
            continue
        answer = [line for line in path.with_suffix(".events").read_text().splitlines()[1:] if is_of_alarms(line)]
        want = worked_out(path)
        for got, expected in zip(answer + ["(nothing)"], want + ["(nothing)"]):
            if got != expected:
                print(f"{path.stem}: the answer says\n  {got}\nand it works out as\n  {expected}")
                wrong += 1
                break
        else:
            print(f"{path.stem}: {len(answer)} lines of alarms")
            wrong += len(answer) != len(want) or not answer
    return 1 if wrong else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
