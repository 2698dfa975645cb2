#!/usr/bin/env python3
"""Works out by itself what a small day of samples must look like: front.dat, the store's file of ninety minutes in which
a front passes, and front.drawings, the twelve drawings of it (six graphs, each as the main pane and as a small one).
The engine's tests compare with both. Run it again after changing the day; it shares nothing with the engine."""
import datetime, math, pathlib, struct

N = 90
START = datetime.datetime(2026, 10, 5, 22, 40, 33)
SAVED = START + datetime.timedelta(minutes=N - 1, seconds=20)
MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()


def single(x):
    return struct.unpack("f", struct.pack("f", x))[0]


def stamp(t):
    return f"{t.day:02} {MONTHS[t.month - 1]} {t.year} {t:%H:%M:%S}"


def day(r):
    """The ten readings of minute r, in tenths, so that the file's text is exact."""
    cold = 0 if r < 40 else min(r - 39, 25)
    temp = 142 - cold * 3 + (r % 3)
    dew = 118 - cold * 2 + (r % 2)
    hum = 780 + cold * 4
    avg = 96 + cold * 7 + (r * 37) % 23
    bar = 10090 - 10 * min(r // 12, 4) + 10 * (max(r - 45, 0) // 9)
    rain = 0 if r < 38 else max(0, 120 - 4 * (r - 38)) // 10 * 10
    gust = avg + 40 + (r * 53) % 61
    direction = [2000, 2100, 2250][r % 3] if r < 41 else [3600, 3150, 2900][r % 3]
    if 10 <= r <= 12:
        avg = gust = direction = 0
    indoor = 205 + (r // 30)
    inhum = 450 + r // 9 * 10
    return [temp, dew, hum, avg, bar, rain, gust, direction, indoor, inhum]


def text(tenths):
    whole, rest = divmod(abs(tenths), 10)
    return ("-" if tenths < 0 else " ") + (f"{whole}.{rest}" if rest else f"{whole}") + " "


ROWS = [None] + [day(r) for r in range(1, N + 1)]
ROWS[70][4] = 0  # a pressure outside its limits: the line is broken there
ROWS[90][4] = 0  # so that row 89 ends the run
ROWS[88][4] = 0  # and row 89 stands alone
VALUES = [None] + [[single(v / 10) for v in row] for row in ROWS[1:]]
STAMPS = [""] + [stamp(START + datetime.timedelta(minutes=r - 1)) for r in range(1, N + 1)]
STAMPS[67] = "??"


def file_text():
    lines = [stamp(SAVED), f" {N} ", f" {N} "] + [" 0 "] * 60
    for r in range(N + 1):
        lines.append(f"{STAMPS[r]:20}")
        lines += [text(v) for v in ROWS[r]] if r else [f" {N} "] * 10
    return "".join(line + "\r\n" for line in lines)


# least, greatest, tick
LIMITS = {0: (-40, 60, 1), 1: (-40, 60, 1), 8: (-40, 60, 1), 2: (0, 100, 5), 9: (0, 100, 5), 3: (0, 333, .5), 6: (0, 333, .5),
          4: (794, 1051, 1), 5: (0, 1000, 1), 7: (0, 360, 45)}
GRAPHS = [("temperature", [(0, "first"), (1, "second"), (8, "indoor")]), ("humidity", [(2, "first"), (9, "indoor")]),
          ("wind", [(3, "first"), (6, "second")]), ("barometer", [(4, "first")]), ("rain", [(5, "first")]),
          ("direction", [(7, "first")])]
BEARINGS = {0: "00", 45: " ne", 90: " E", 135: " se", 180: " S", 225: " sw", 270: " W", 315: " nw", 360: " N"}


def within(s, v):
    return LIMITS[s][0] <= v <= LIMITS[s][1]


def axis(s):
    least, greatest, tick = LIMITS[s]
    if s in (2, 9, 7):
        return least, greatest
    seen = [v[s] for v in VALUES[1:] if within(s, v[s])]
    low = least if s in (3, 6, 5) else least + math.floor((min(seen) - least) / tick + 1e-4) * tick
    high = least + math.ceil((max(seen) - least) / tick - 1e-4) * tick
    if high - low < 2 * tick:
        high = low + 2 * tick
        if high > greatest:
            low, high = greatest - 2 * tick, greatest
    return low, min(high, greatest)


def drawing(kind, series, main):
    out = [f"# {kind} {'main' if main else 'small'}"]
    line = lambda pen, *points: out.append(f"line {pen} " + " ".join(f"{x:.1f},{y:.1f}" for x, y in points))
    axes = [axis(s) for s, _ in series]
    low, high = min(a for a, _ in axes), max(b for _, b in axes)
    labels = []
    if main:
        line("axis", (6432, 2400), (500, 2400)); line("axis", (490, 2400), (490, 385))
        x0, x1, y0, y1 = 480, 6432, 2400, 385
        step, x = round((x1 - x0) / max(N / 60, 1)), x0
        while x <= x1:
            line("tick", (x, 2400), (x, 2440))
            r = min(max(int((x - 480) / 5952 * N) + 1, 1), N)
            hour = "??" if STAMPS[r] == "??" else f"{(START + datetime.timedelta(minutes=r - 1)).hour:02}"
            labels.append(f"label below {x:.1f},2440.0 [{hour}]")
            x += step
        for k in range(9):
            value = low + k * (high - low) / 8
            y = y0 - (y0 - y1) * k / 8
            line("grid", (490, y), (6432, y))
            name = BEARINGS[round(value)] if kind == "direction" else f"{value:.3f}".rstrip("0").rstrip(".")
            labels.append(f"label left 490.0,{y:.1f} [{name}]")
    else:
        line("axis", (1560, 550), (300, 550)); line("axis", (300, 550), (300, 150))
        x0, x1, y0, y1 = 300, 1560, 550, 150
    dots = []
    for s, pen in series:
        runs, alone = [[]], []
        for r in range(1, N + 1):
            v = VALUES[r][s]
            if not within(s, v):
                runs.append([])
                continue
            runs[-1].append((x0 + (x1 - x0) * (r - .5) / N, y0 - (y0 - y1) * (v - low) / (high - low)))
        for run in runs:
            if kind == "direction" or len(run) == 1:
                alone += run
            elif run:
                line(pen, *run)
        if alone:
            dots.append(f"dots {pen} " + " ".join(f"{x:.1f},{y:.1f}" for x, y in alone))
    return out + dots + labels


here = pathlib.Path(__file__).parent
(here / "front.dat").write_text(file_text(), newline="")
(here / "front.drawings").write_text(
    "".join("\n".join(drawing(kind, series, main)) + "\n" for kind, series in GRAPHS for main in (True, False)))
