#!/usr/bin/env python3
"""What a client's synchronisation with its server costs beyond its stated pauses: benchmarks/synchronise.py [PROGRAM]

Starts two copies of nimbryd (default build/release/programs/nimbryd/nimbryd) on loopback, a server with a full day of samples on a
pseudo-terminal and a client, sends a train, and prints the time from the client's first status line to its last, what of it
are the pauses of the conversation, and the rest. Budget: 0.5 s.
"""
import datetime
import os
import pathlib
import pty
import subprocess
import sys
import tempfile
import time
import tty

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import live_line  # noqa: E402  (its train)

PIECE = 8192
SERIES = 10
DAY = 1440


def stamp(moment):
    return moment.strftime("%d %b %Y %H:%M:%S").ljust(20)


def day_of_graphs(now):
    """The bytes of grafdata.dat with every row in use, as docs/formats/graph-store.md has them."""
    lines = [stamp(now), f" {DAY} ", f" {DAY} "] + [" 1 "] * 60
    lines += [" " * 20] + [f" {DAY} "] * SERIES
    for row in range(1, DAY + 1):
        lines.append(stamp(now - datetime.timedelta(minutes=DAY - row)))
        lines += [f" {row % 40 + series / 10} " for series in range(SERIES)]
    return "".join(line + "\r\n" for line in lines).encode()


def start(program, folder, lines, device, errors):
    (folder / "Nimbry.ini").write_text("[Main]\r\nHasRun=True\r\n" + lines, newline="")
    return subprocess.Popen([program, "--dir", str(folder), "--device", device], stderr=errors)


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else str(live_line.ROOT / "build/release/programs/nimbryd/nimbryd")
    master, slave = pty.openpty()
    tty.setraw(slave)
    with tempfile.TemporaryDirectory() as where:
        root = pathlib.Path(where)
        server_folder, client_folder = root / "server", root / "client"
        server_folder.mkdir()
        client_folder.mkdir()
        (server_folder / "grafdata.dat").write_bytes(day_of_graphs(datetime.datetime.now()))
        (server_folder / "nbextreme.log").write_text("almanac\r\n", newline="")
        own = f"127.{1 + os.getpid() // 250 % 200}.{os.getpid() % 250}."
        server = start(program, server_folder,
                       f"bcastnet=True\r\nnumofentries=1\r\niplist(1)={own}2\r\nLocalIP={own}1\r\n",
                       os.ttyname(slave), subprocess.DEVNULL)
        client = None
        try:
            time.sleep(2)
            client = start(program, client_folder, f"fromnet=True\r\nLocalIP={own}2\r\n", "/dev/null", subprocess.PIPE)
            time.sleep(1)
            os.write(master, live_line.make_train())
            begun = ended = 0.0
            for line in client.stderr:
                text = line.decode()
                if "was detected" in text:
                    begun = time.monotonic()
                if "now starting" in text:
                    ended = time.monotonic()
                    break
            log = (server_folder / "nbyprog.log").read_text()
            files = [server_folder / name for name in ("sync.cfg", "grafdata.dat", "nimbrTDay.log", "nimbrYDay.log",
                                                       "rainlh.log", "nbextreme.log")]
            present = [file for file in files if file.exists()]
            missing = len(files) - len(present)
            pieces = sum(-(-file.stat().st_size // PIECE) for file in present)
            # Locking on and the status; of a file the pause before it, behind each piece and before its end mark;
            # of one that is missing three retries; the pause before the last command.
            pauses = 0.030 + 0.310 * len(present) + 0.010 * pieces + 0.3 * missing + 0.1
            if "connected" not in log:
                sys.exit("no connection")
            print(f"graph file           {(server_folder / 'grafdata.dat').stat().st_size} bytes, {pieces} pieces in all")
            print(f"whole                {ended - begun:.3f} s")
            print(f"stated pauses        {pauses:.3f} s")
            print(f"beyond them          {ended - begun - pauses:.3f} s   (budget 0.5 s)")
        finally:
            for process in (server, client):
                if process:
                    process.terminate()
                    process.wait()


if __name__ == "__main__":
    main()
