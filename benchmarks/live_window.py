#!/usr/bin/env python3
"""What a running nimbry costs with its window open: benchmarks/live_window.py [PROGRAM] [SECONDS]

Starts nimbry (default build/release/programs/nimbry/nimbry) in a folder of its own, on a pseudo-terminal and on a screen of its own
(Xvfb), and prints

  start to first paint    the median of 9 starts, until the splash's middle stands on the screen
  start to main window    of the last start: 5 s of it are the splash's
  processor time          in percent of one core, over SECONDS (default 60) of a train every 10 s and a wind group every 2.5 s
  resident memory         at the end, and how much of it is the program's own

each beside its budget.
"""
import contextlib
import mmap
import os
import pathlib
import pty
import signal
import struct
import subprocess
import sys
import tempfile
import time
import tty

from live_line import ROOT, make_train, play, processor_seconds, resident_mib, show

WIDTH, HEIGHT = 1600, 1000
STARTS = 9


class Screen:
    """An X server whose picture lies in a file that can be looked at without asking it."""

    def __init__(self, folder):
        number, told = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(told), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-fbdir", folder, "-nolisten", "tcp"],
            pass_fds=[told], stderr=subprocess.DEVNULL)
        os.close(told)
        with os.fdopen(number) as says:
            self.display = ":" + says.readline().strip()
        with open(f"{folder}/Xvfb_screen0", "rb") as file:
            self.pixels = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self.pixels[:100])
        self.first = header[0] + 12 * header[19]  # behind the header and its colours
        self.stride = header[12]

    def row(self, y):
        start = self.first + y * self.stride
        return self.pixels[start:start + self.stride]

    def close(self):
        self.server.terminate()
        self.server.wait(10)


def wait_for_paint(screen, y, before, limit):
    """The moment at which a row of the screen is no longer what it was."""
    end = time.monotonic() + limit
    while time.monotonic() < end:
        if screen.row(y) != before:
            return time.monotonic()
        time.sleep(0.0005)
    sys.exit("nimbry has painted nothing")


@contextlib.contextmanager
def running(program, folder, device, screen):
    environment = {**os.environ, "DISPLAY": screen.display, "QT_QPA_PLATFORM": "xcb"}
    nimbry = subprocess.Popen([program, "--dir", folder, "--device", device], env=environment, stderr=subprocess.DEVNULL)
    try:
        yield nimbry
    finally:
        nimbry.send_signal(signal.SIGINT)
        try:
            nimbry.wait(10)
        except subprocess.TimeoutExpired:
            nimbry.kill()
            nimbry.wait()


def own_mib(process):
    """Memory that no other program shares: what would be free without this one."""
    rows = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()
    return sum(int(row.split()[1]) for row in rows if row.startswith("Private_")) / 1024


def measure(program, seconds):
    """The figures as rows: what, figure, budget."""
    train = make_train()
    line, other_end = pty.openpty()
    tty.setraw(other_end)
    device = os.ttyname(other_end)

    with tempfile.TemporaryDirectory(prefix="nimbry-") as folder, tempfile.TemporaryDirectory() as pictures:
        (pathlib.Path(folder) / "Nimbry.ini").write_text("[Main]\r\nHasRun=True\r\n")
        paints = []
        for start in range(STARTS):
            with contextlib.closing(Screen(pictures)) as screen:
                empty, begun = screen.row(HEIGHT // 2), time.monotonic()
                with running(program, folder, device, screen) as nimbry:
                    paints.append(wait_for_paint(screen, HEIGHT // 2, empty, 10) - begun)
                    if start == STARTS - 1:
                        return start_rows(sorted(paints)) + open_window_rows(screen, nimbry.pid, begun, line, train, seconds)


def start_rows(paints):
    return [("start to first paint", f"{paints[len(paints) // 2] * 1000:.0f} ms", "400 ms (median)"),
            ("the slowest", f"{paints[-1] * 1000:.0f} ms", f"(of {len(paints)} starts)")]


def open_window_rows(screen, process, begun, line, train, seconds):
    # The splash is no taller than a quarter of the screen.
    opened = wait_for_paint(screen, HEIGHT // 8, bytes(screen.stride), 15)
    play(line, train, 10)  # the first train opens the menus and fills every box
    used, since = processor_seconds(process), time.monotonic()
    play(line, train, seconds)
    share = (processor_seconds(process) - used) / (time.monotonic() - since)
    return [("start to main window", f"{opened - begun:.2f} s", "(5 s of it the splash)"),
            ("processor time", f"{share * 100:.3f} %", "1 % of a core"),
            ("resident memory", f"{resident_mib(process):.1f} MiB", "120 MiB"),
            ("its own of it", f"{own_mib(process):.1f} MiB", "(the rest is code that programs share)")]


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else str(ROOT / "build/release/programs/nimbry/nimbry")
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60.0
    for row in measure(program, seconds):
        show(*row)


if __name__ == "__main__":
    main()
