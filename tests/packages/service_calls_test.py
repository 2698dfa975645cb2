#!/usr/bin/env python3
"""What nimbryd asks of the system, against what its service's unit lets it ask.

usage: service_calls_test.py UNIT PROGRAMS, the .service file and the build's programs/

nimbryd works for a while under strace: weather, settings, pages, pictures, a mail and a request that reach nobody. Ends with 77 where strace
may not look.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

UNIT, PROGRAMS = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])


def settings(key):
    return re.findall(rf"^{key}=(.*)$", UNIT.read_text(), re.M)


def members(group):
    """The system calls of a group like @system-service, or the one of a plain name."""
    if not group.startswith("@"):
        return {group}
    listed = subprocess.run(["systemd-analyze", "syscall-filter", group], capture_output=True, text=True, check=True).stdout
    names = [line.strip() for line in listed.splitlines()[1:] if line.strip() and not line.strip().startswith("#")]
    return set().union(*(members(name) for name in names))


def allowed():
    calls = set()
    for line in settings("SystemCallFilter"):
        named = set().union(*(members(name) for name in line.removeprefix("~").split()))
        calls = calls - named if line.startswith("~") else calls | named
    # What systemd always lets pass, so that a program can start and end at all.
    return calls | members("@default")


def work(folder):
    """Runs nimbryd under strace and returns what it asked."""
    line, trace, home = folder / "line", folder / "trace", folder / "home"
    program = {name: str(PROGRAMS / name / name) for name in ("nimbryd", "nimbryctl", "nimbry-station")}

    def ask(*words):
        return subprocess.run([program["nimbryctl"], "--dir", home, *words], capture_output=True, text=True, timeout=300)

    station = subprocess.Popen([program["nimbry-station"], "--link", line, "--speed", "10"], stdout=subprocess.DEVNULL)
    copy = subprocess.Popen(["strace", "-f", "-qq", "-e", "signal=none", "-o", trace,
                             program["nimbryd"], "--dir", home, "--device", line], stderr=subprocess.DEVNULL)
    try:
        ends = time.monotonic() + 300
        while "fullystarted\ttrue" not in ask("status").stdout:
            if copy.poll() is not None:
                return None
            if time.monotonic() > ends:
                raise AssertionError("no weather")
            time.sleep(0.2)
        for key, value in (("LocalPath", str(folder)), ("LocalSave", "True"), ("FTPRemoteFile", "index.html"), ("MailServer", "127.0.0.1"),
                           ("MailPort", "9"), ("MailTo", "a@example.org"), ("MailMyAddr", "b@example.org"), ("WUuser", "KXXTOWN1"),
                           ("WUpass", "x"), ("WUhost", "127.0.0.1:9")):
            ask("set", "FTP", key, value)
        for words in (("install-templates",), ("generate",), ("graph", "wind", "--svg", str(folder / "w.svg")), ("force", "mail"),
                      ("force", "weather"), ("apply",), ("prune-log", "--yes"), ("stop",)):
            ask(*words)
        copy.wait(300)
    finally:
        if copy.poll() is None:
            copy.kill()
        station.terminate()
        station.wait()
    return trace.read_text(errors="replace")


class ServiceCalls(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="nimbry-calls-"))
        try:
            cls.trace = work(folder)
        finally:
            shutil.rmtree(folder)
        if cls.trace is None:
            print("strace may not look here")
            os._exit(1 if "CI" in os.environ else 77)  # where it has to run, that is a failure

    def test_asks_for_no_call_that_is_kept_from_it(self):
        asked = set(re.findall(r"^\d+ +(?:<\.\.\. )?([a-z_0-9]+)(?:\(| resumed)", self.trace, re.M))
        self.assertGreater(len(asked), 40)
        self.assertEqual(sorted(asked - allowed()), [])

    def test_talks_in_no_family_that_is_kept_from_it(self):
        families = set(re.findall(r"socket\((AF_[A-Z0-9]+)", self.trace))
        self.assertIn("AF_UNIX", families)
        self.assertEqual(sorted(families - set(" ".join(settings("RestrictAddressFamilies")).split())), [])

    def test_makes_no_memory_that_can_be_written_and_run(self):
        self.assertIn("MemoryDenyWriteExecute=yes", UNIT.read_text())
        self.assertEqual(re.findall(r".*PROT_WRITE\|PROT_EXEC.*", self.trace), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
