#!/usr/bin/env python3
"""What a running nimbryd costs on a live line: benchmarks/live_line.py [PROGRAM] [SECONDS]

Starts nimbryd (default build/release/programs/nimbryd/nimbryd) in a folder of its own on a pseudo-terminal and prints

  start to listening      beyond the half second that the two opens of the port take
  last byte to forwarding of a train that comes at the speed of the line, beyond the 30 ms of settling
  processor time          in percent of one core, over SECONDS (default 60) of a train every 10 s and a wind group every 2.5 s
  resident memory         at the end

each beside its budget. Needs the UDP port 60135 of this machine, to hear the forwarded trains.
"""
import os
import pathlib
import pty
import signal
import socket
import subprocess
import sys
import tempfile
import time
import tty

ROOT = pathlib.Path(__file__).resolve().parent.parent
BYTE_SECONDS = 0.00104  # 10 bits at 9600 baud
CLIENT_PORT = 60135

SPANS = [(0x8F, 0, 35), (0x9F, 35, 34), (0xAF, 69, 31), (0xBF, 100, 14), (0xCF, 114, 27)]


def make_train():
    """A sound train at 14:00:10 on 5 October: 12.3 degrees outside, 21.5 inside, 1013 hPa."""
    train = bytearray(141)
    for tag, first, _ in SPANS:
        train[first] = tag
    train[1:6] = bytes([0x10, 0x00, 0x14, 0x05, 0x0A])   # second, minute, hour, day, month
    train[8] = 0x45                                      # indoor humidity
    train[20] = 0x54                                     # outdoor humidity
    train[35 + 1:35 + 3] = bytes([0x15, 0x02])           # indoor temperature
    train[35 + 16:35 + 18] = bytes([0x23, 0x01])         # outdoor temperature
    train[69 + 3:69 + 7] = bytes([0x03, 0x13, 0x10, 0x21])  # sea-level pressure, trend, outlook
    for _, first, length in SPANS:
        train[first + length - 1] = sum(train[first:first + length - 1]) & 0xFF
    return bytes(train)


def send_paced(line, data):
    """Sends byte after byte at the speed of the line; gives the moment of the last one."""
    next_at = time.monotonic()
    for byte in data:
        while time.monotonic() < next_at:
            time.sleep(max(0.0, next_at - time.monotonic()))
        os.write(line, bytes([byte]))
        next_at += BYTE_SECONDS
    return time.monotonic()


def holds_open(process, device):
    folder = f"/proc/{process}/fd"
    try:
        return any(os.readlink(f"{folder}/{name}") == device for name in os.listdir(folder))
    except OSError:
        return False


def start_to_listening(process, device, begun):
    """Seconds until the port is open to stay. The first of its two opens is too short to count."""
    opened = None
    while time.monotonic() < begun + 1.5:
        if holds_open(process, device):
            opened = opened or time.monotonic()
        else:
            opened = None
        time.sleep(0.0005)
    if opened is None:
        sys.exit("nimbryd has not opened its port")
    return opened - begun


def processor_seconds(process):
    return int(pathlib.Path(f"/proc/{process}/schedstat").read_text().split()[0]) / 1e9


def resident_mib(process):
    for row in pathlib.Path(f"/proc/{process}/status").read_text().splitlines():
        if row.startswith("VmRSS:"):
            return int(row.split()[1]) / 1024
    return float("nan")


def forwarding_delays(line, client, train, times):
    """Seconds from the last byte of a train to its datagram, for some trains."""
    delays = []
    for _ in range(times):
        last = send_paced(line, train)
        client.settimeout(5)
        received = client.recv(2048)
        delays.append(time.monotonic() - last)
        if received != train:
            sys.exit("what was forwarded is not the train")
        time.sleep(0.3)
    return delays


def play(line, train, seconds):
    """A station: a train every 10 s, a lone wind group every 2.5 s between."""
    begun = time.monotonic()
    turn = 0
    while time.monotonic() - begun < seconds:
        send_paced(line, train if turn % 4 == 0 else train[114:])
        turn += 1
        time.sleep(max(0.0, begun + 2.5 * turn - time.monotonic()))


def show(what, figure, budget):
    print(f"{what:<28}{figure:>14}   budget {budget}")


def measure(program, seconds):
    """The figures as rows: what, figure, budget."""
    rows = []
    train = make_train()
    line, other_end = pty.openpty()
    tty.setraw(other_end)
    device = os.ttyname(other_end)
    client = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    client.bind(("127.0.0.1", CLIENT_PORT))

    with tempfile.TemporaryDirectory(prefix="nimbry-") as folder:
        settings = ["[Main]", "HasRun=True", "bcastnet=True", "numofentries=1", "iplist(1)=127.0.0.1", ""]
        (pathlib.Path(folder) / "Nimbry.ini").write_text("\r\n".join(settings))
        begun = time.monotonic()
        nimbryd = subprocess.Popen([program, "--dir", folder, "--device", device], stderr=subprocess.DEVNULL)
        try:
            listening = start_to_listening(nimbryd.pid, device, begun)
            rows.append(("start to listening", f"{(listening - 0.5) * 1000:.1f} ms", "100 ms beyond the 500 ms"))
            delays = sorted(forwarding_delays(line, client, train, 20))
            median = delays[len(delays) // 2]
            rows.append(("last byte to forwarding", f"{(median - 0.03) * 1000:.2f} ms", "3 ms beyond the 30 ms (median)"))
            rows.append(("", f"{(delays[-1] - 0.03) * 1000:.2f} ms", "(slowest of 20)"))
            used, since = processor_seconds(nimbryd.pid), time.monotonic()
            play(line, train, seconds)
            share = (processor_seconds(nimbryd.pid) - used) / (time.monotonic() - since)
            rows.append(("processor time", f"{share * 100:.3f} %", "0.3 % of a core"))
            rows.append(("resident memory", f"{resident_mib(nimbryd.pid):.1f} MiB", "24 MiB"))
            nimbryd.send_signal(signal.SIGINT)
            nimbryd.wait(10)
        finally:
            if nimbryd.poll() is None:
                nimbryd.kill()
                nimbryd.wait()
            client.close()
            os.close(line)
            os.close(other_end)
    return rows


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else str(ROOT / "build/release/programs/nimbryd/nimbryd")
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60.0
    for row in measure(program, seconds):
        show(*row)


if __name__ == "__main__":
    main()
