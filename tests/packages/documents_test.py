#!/usr/bin/env python3
"""What comes with the programs in their packages: manual pages, completion, unit, desktop entry.

usage: documents_test.py PACKAGING PROGRAMS, the folder packaging/ and the build's programs/
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PACKAGING, PROGRAMS = (pathlib.Path(path) for path in sys.argv[1:3])
PROGRAM_NAMES = [name for name in ("nimbry", "nimbryd", "nimbryctl", "nimbry-station") if (PROGRAMS / name / name).exists()]


def run(*command, **settings):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=60, **settings)


def help_of(name):
    return run(PROGRAMS / name / name, "--help", env=dict(os.environ, QT_QPA_PLATFORM="offscreen")).stdout


def page_of(name):
    """The manual page as plain text, its lines unbroken."""
    return run("groff", "-man", "-Tascii", "-rLL=400n", "-P-c", "-P-b", "-P-u", "-P-o", PACKAGING / "man" / f"{name}.1").stdout


def section(page, title):
    """The entries' heads of one section: lines with the first indentation."""
    found = re.search(rf"^{title}\n(.*?)(?=^[A-Z])", page, re.M | re.S)
    return [line.strip() for line in found.group(1).splitlines() if re.match(r" {7}\S", line)]


def options_told(text):
    """Heads of options in a help text: "--dir DIR"."""
    return sorted(found.strip() for found in re.findall(r"^  (--[a-z]+(?: [A-Z]+)?)", text, re.M))


def verbs_told(text):
    """Heads of verbs in nimbryctl's help. A long one has its line to itself, the others end before column 28."""
    lines = text.split("\nVerbs:\n")[1].split("\n\n")[0].splitlines()
    alone = [below.startswith(" " * 28) for below in lines[1:]] + [False]
    return [(line if has_line else line[:28]).strip() for line, has_line in zip(lines, alone) if re.match("  [a-z]", line)]


class ManualPages(unittest.TestCase):
    def test_are_free_of_mistakes(self):
        for name in PROGRAM_NAMES:
            with self.subTest(name):
                said = run("groff", "-man", "-ww", "-z", "-Tutf8", "-rCHECKSTYLE=3", PACKAGING / "man" / f"{name}.1")
                self.assertEqual((said.returncode, said.stderr), (0, ""))

    def test_tell_the_options_that_the_help_tells(self):
        for name in PROGRAM_NAMES:
            with self.subTest(name):
                told = options_told(help_of(name))
                self.assertGreaterEqual(len(told), 3)
                self.assertEqual(sorted(section(page_of(name), "OPTIONS")), told)

    def test_tell_the_verbs_that_the_help_tells(self):
        heads = section(page_of("nimbryctl"), "VERBS")
        self.assertGreaterEqual(len(heads), 19)
        self.assertEqual(heads, verbs_told(help_of("nimbryctl")))

    def test_are_of_the_programs_version(self):
        for name in PROGRAM_NAMES:
            with self.subTest(name):
                version = run(PROGRAMS / name / name, "--version").stdout.split()[1]
                self.assertIn(f"Nimbry {version} ", page_of(name).replace("\n", " "))


COMPLETE = r"""
. "$1"; shift
COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=()
compopt() { :; }
registered=$(complete -p "$1")
function=${registered#*-F }
"${function%% *}"
printf '%s\n' "${COMPREPLY[@]}"
"""


class Completion(unittest.TestCase):
    def complete(self, file, *words):
        path = os.pathsep.join([str(PROGRAMS / name) for name in PROGRAM_NAMES] + [os.environ["PATH"]])
        said = run("bash", "-c", COMPLETE, "bash", PACKAGING / "completion" / file, *words, env=dict(os.environ, PATH=path))
        self.assertEqual((said.returncode, said.stderr), (0, ""))
        return [word for word in said.stdout.splitlines() if word]

    def test_knows_every_option_that_the_help_tells(self):
        for name, file in (("nimbryd", "nimbryd"), ("nimbry", "nimbryd"), ("nimbry-station", "nimbry-station"),
                           ("nimbryctl", "nimbryctl")):
            if name not in PROGRAM_NAMES:
                continue
            with self.subTest(name):
                told = [head.split()[0] for head in options_told(help_of(name))]
                self.assertEqual(sorted(self.complete(file, name, "--")), told)

    def test_knows_every_verb(self):
        told = [head.split()[0] for head in verbs_told(help_of("nimbryctl"))]
        offered = self.complete("nimbryctl", "nimbryctl", "")
        self.assertEqual([word for word in offered if not word.startswith("-")], told)

    def test_knows_the_options_of_every_verb(self):
        for head in verbs_told(help_of("nimbryctl")):
            verb = head.split()[0]
            with self.subTest(verb):
                told = sorted(re.findall(r"--[a-z]+", head))
                self.assertEqual(sorted(self.complete("nimbryctl", "nimbryctl", verb, "x", "--")), told)

    def test_knows_the_choices_of_a_verb(self):
        for words, offered in (
                (("graph", "w"), ["wind"]),
                (("force", ""), ["ftp", "mail", "weather"]),
                (("apply", "l"), ["location"]),
                (("units", "--baro", ""), ["mB", "hPa", "inHg"]),
                (("changeover", ""), ["midnight", "9", "10"]),
                (("--dir", "/nowhere", "st"), ["status", "stop"]),
                (("stop", ""), [])):
            with self.subTest(words):
                self.assertEqual(self.complete("nimbryctl", "nimbryctl", *words), offered)

    def test_offers_folders_and_devices(self):
        self.assertEqual(self.complete("nimbryd", "nimbryd", "--dir", "/us"), ["/usr"])
        self.assertEqual(self.complete("nimbryd", "nimbryd", "--device", "/dev/nul"), ["/dev/null"])
        self.assertEqual(self.complete("nimbry-station", "nimbry-station", "--play", "/us"), ["/usr"])


class Desktop(unittest.TestCase):
    def test_entry_is_valid(self):
        said = run("desktop-file-validate", PACKAGING / "nimbry.desktop")
        self.assertEqual((said.returncode, said.stdout + said.stderr), (0, ""))

    def test_metainfo_is_valid(self):
        # Nimbry has no domain of its own to be named by.
        said = run("appstreamcli", "validate", "--no-net", "--override=cid-desktopapp-is-not-rdns=info",
                   PACKAGING / "nimbry.metainfo.xml")
        self.assertEqual(said.returncode, 0, said.stdout)


class Service(unittest.TestCase):
    def test_unit_is_sound(self):
        with tempfile.TemporaryDirectory() as folder:
            unit = pathlib.Path(folder) / "nimbryd.service"
            # The program is not installed here; what is looked at is the rest.
            unit.write_text((PACKAGING / unit.name).read_text().replace("/usr/bin/nimbryd", "/bin/true"))
            said = run("systemd-analyze", "verify", "--man=no", unit)
            self.assertEqual((said.returncode, [line for line in said.stderr.splitlines() if unit.name in line]), (0, []))

    def test_has_little_to_lose(self):
        said = run("systemd-analyze", "security", "--offline=true", "--threshold=20", PACKAGING / "nimbryd.service")
        self.assertEqual(said.returncode, 0, said.stdout[-400:] + said.stderr)

    def test_starts_again_where_the_program_ends_itself(self):
        lines = (PACKAGING / "nimbryd.service").read_text().splitlines()
        self.assertIn("Restart=on-failure", lines)
        # Statuses that are a fault of the command line, by the program's own words.
        told = re.search(r"(\d) bad usage", help_of("nimbryd")).group(1)
        self.assertIn(f"RestartPreventExitStatus={told}", lines)


class AdapterRules(unittest.TestCase):
    """The three rules of the udev example, as they are once the "#" is off. packages_test.sh shows them to udev itself."""

    RULES = PACKAGING / "60-weather-station.rules"

    def test_are_of_keys_that_udev_knows(self):
        rules = [line[1:] for line in self.RULES.read_text().splitlines() if re.match(r"#[A-Z]+[=+{]", line)]
        self.assertEqual(len(rules), 3)
        asks = r'(?:SUBSYSTEM|ATTRS\{(?:idVendor|idProduct|serial)\}|ENV\{ID_PATH\})=="[^"]+"'
        for rule in rules:
            with self.subTest(rule):
                self.assertRegex(rule, rf'^SUBSYSTEM=="tty"(?:, {asks})+, SYMLINK\+="weather-station", ENV\{{ID_MM_DEVICE_IGNORE\}}="1"$')

    def test_are_as_the_manual_names_them(self):
        page = (PACKAGING.parent / "docs" / "connecting.md").read_text()
        self.assertIn(f"/usr/share/doc/nimbryd/examples/{self.RULES.name}", page)
        self.assertIn("/dev/weather-station", page)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
