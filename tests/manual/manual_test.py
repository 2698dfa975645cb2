#!/usr/bin/env python3
"""Runs every command of the manual, and looks for every message in it.

usage: manual_test.py SOURCES PROGRAMS, the project's folder and the build's programs/

A block of the pages that is fenced as `sh` is a script: it runs in an empty home folder, all blocks of a page one after the other,
and has to succeed. In a block fenced as `console` the lines that begin with "$ " are commands, the others what they may answer; such a
command may be refused (status 1), but not for the way it is written. What cannot be run stands in elsewhere.txt.

The programs are the built ones. Where a page asks a copy that does not run yet, one is started on a simulated station;
nimbryd, nimbry and nimbry-station go on in the background; the service's folder is one in the home folder, asked without sudo.
"""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

SOURCES, PROGRAMS = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
PAGES = sorted((SOURCES / "docs").glob("*.md")) + [SOURCES / "README.md"]
ELSEWHERE = [line for line in (pathlib.Path(__file__).parent / "elsewhere.txt").read_text().splitlines()
             if line and not line.startswith("#")]
DONE, REFUSED = 0, 1

PRELUDE = r"""
at() { # the folder that a command line names, as options for nimbryctl
    local folder=()
    while [ $# -gt 0 ]; do
        case $1 in
            --dir) folder=(--dir "$2"); break ;;
            --dir=*) folder=(--dir "${1#--dir=}"); break ;;
        esac
        shift
    done
    printf '%s\n' "${folder[@]}"
}
eventually() {
    local tries
    for ((tries = 0; tries < 600; ++tries)); do
        "$@" >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    echo "in vain: $*" >&2
    return 1
}
real() { local name=$1; shift; "$PROGRAMS/$name/$name" "$@"; }
in_background() { # PROGRAM ARGUMENT...
    local name=$1
    shift
    "$PROGRAMS/$name/$name" "$@" >>"$PLAYED/out" 2>&1 &
    echo $! >>"$PLAYED/processes"
}
answers() { real nimbryctl "$@" status; }
has_weather() { answers "$@" | grep -qP '^fullystarted\ttrue'; }
play_copy() { # OPTIONS...
    local line=$PLAYED/line.$RANDOM$RANDOM
    in_background nimbry-station --speed 10 --link "$line"
    eventually test -e "$line"
    in_background nimbryd "$@" --device "$line"
    eventually has_weather "$@"
}
nimbryctl() {
    local folder=() panel=()
    case ${1:-} in --help | --version) real nimbryctl "$@"; return ;; esac
    mapfile -t folder < <(at "$@")
    [ -n "${folder[0]:-}" ] || folder=()
    answers "${folder[@]}" >/dev/null 2>&1 || play_copy "${folder[@]}"
    # The panel stays until the copy ends; once is enough here.
    case " $* " in *' panel '*--once*) ;; *' panel '*) panel=(--once) ;; esac
    real nimbryctl "$@" "${panel[@]}"
}
started() { # PROGRAM ARGUMENT...: it answers, or says at once what it does not like
    local folder=()
    # The command line first: with --version it is read, and nothing is started.
    real "$@" --version >/dev/null || return
    mapfile -t folder < <(at "$@")
    [ -n "${folder[0]:-}" ] || folder=()
    real nimbryctl "${folder[@]}" stop >/dev/null 2>&1 || true
    in_background "$@"
    eventually answers "${folder[@]}"
}
nimbryd() { started nimbryd "$@"; }
nimbry() { QT_QPA_PLATFORM=offscreen started nimbry "$@"; }
nimbry-station() {
    real nimbry-station "$@" --version >/dev/null || return
    in_background nimbry-station "$@"
    while [ $# -gt 0 ]; do [ "$1" = --link ] && eventually test -e "$2"; shift; done
}
set -eu -o pipefail
cd "$HOME"
"""


def fenced(page):
    """The blocks of a page that hold commands: kind, text."""
    return re.findall(r"^```(sh|console)\n(.*?)^```$", page.read_text(), re.M | re.S)


def commands(kind, text):
    """Its commands, a line each."""
    lines = text.splitlines()
    return lines if kind == "sh" else [line[2:] for line in lines if line.startswith("$ ")]


def as_run(line):
    """A command as this test can run it; nothing if it is run elsewhere."""
    if line in ELSEWHERE:
        return None
    if line.startswith("sudo nimbryctl --dir /var/lib/nimbry "):
        line = line.removeprefix("sudo ").replace("/var/lib/nimbry", '"$HOME/service"')
    # A function that goes on in the background is there once it returns.
    return line.removesuffix(" &")


class Home:
    """A home folder with what was started in it."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="nimbry-manual-"))
        self.played = self.folder / ".played"
        self.played.mkdir()
        (self.folder / "service").mkdir()

    def run(self, script):
        kept = {name: os.environ[name] for name in ("PATH", "LANG", "LC_ALL") if name in os.environ}
        return subprocess.run(["bash", "-c", PRELUDE + script], capture_output=True, text=True, timeout=600, stdin=subprocess.DEVNULL,
                              env=kept | {"HOME": str(self.folder), "PROGRAMS": str(PROGRAMS), "PLAYED": str(self.played), "USER": "me"})

    def close(self):
        started = self.played / "processes"
        for number in started.read_text().split() if started.exists() else []:
            try:
                os.kill(int(number), signal.SIGKILL)
            except ProcessLookupError:
                pass
        shutil.rmtree(self.folder, ignore_errors=True)


class Commands(unittest.TestCase):
    def run_page(self, page):
        home = Home()
        self.addCleanup(home.close)
        for kind, text in fenced(page):
            lines = [line for line in map(as_run, commands(kind, text)) if line]
            for line in lines if kind == "console" else ["\n".join(lines)]:
                said = home.run(line + "\n")
                good = (DONE, REFUSED) if kind == "console" else (DONE,)
                self.assertIn(said.returncode, good, f"{page.name}: {line}\n{said.stdout}{said.stderr}")

    def test_elsewhere_names_only_commands_of_the_manual(self):
        there = {line for page in PAGES for block in fenced(page) for line in commands(*block)}
        self.assertEqual([line for line in ELSEWHERE if line not in there], [])

    def test_a_wrong_option_is_found(self):
        home = Home()
        self.addCleanup(home.close)
        for wrong in ("nimbryctl notices --jason", "nimbryctl set Main Colour", "nimbryd --dyr ~/weather", "nimbryctl apply windows"):
            with self.subTest(wrong):
                self.assertNotIn(home.run(wrong).returncode, (DONE, REFUSED))
        self.assertNotEqual(home.run("nimbry-station --lynk ~/station").returncode, DONE)
        self.assertNotEqual(home.run("nimbryctl set Main Colour blue").returncode, DONE)


def page_test(page):
    return lambda self: self.run_page(page)


for each in PAGES:
    if fenced(each):
        setattr(Commands, "test_of_" + re.sub(r"\W", "_", each.stem), page_test(each))


def literals(text):
    """The words of a C++ text that is broken into several literals, up to where something else is put in."""
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', text))


# Texts of so many words that are no message: names of fields, what a request says, a slip of whoever changes the program.
NO_MESSAGES = {
    "&weather=&clouds=&softwaretype=Nimbry ", "text/plain; charset=windows-1252",
    "CWOP/APRSWXNET user ID", "Weather Underground upload details", "Weatherforyou/Hamweather upload details",
    "Nimbry Client/Server Synchronization", "Waiting for next FTP upload ....",
    "[--dir DIR] [--device PATH]", "usage: nimbryctl [--dir DIR] VERB ...",
    "a fiber is resumed from the main stack, while it is suspended", "a wait outside a conversation",
}


class Messages(unittest.TestCase):
    """messages.md has what the program tells. A message is looked for by its first line's constant words."""

    def setUp(self):
        self.page = (SOURCES / "docs" / "messages.md").read_text()

    def said(self):
        messages = set()
        text = r'"(?:[^"\\]|\\.)*"(?:\s*"(?:[^"\\]|\\.)*")*'
        for path in sorted((SOURCES / "engine").rglob("*.cpp")):
            source = path.read_text()
            for pattern in (rf"(?:event|event_or_nothing)\(({text})", rf"\.text =\s*({text})(?=[^;{{}}]*\.icon)",
                            rf'balloon\("[^"]*", ({text})', rf"SensorRow\{{[^,]*, [^,]*, ({text})", rf"failure\(copy, ({text})",
                            rf"refusal\(({text})", rf"complain\(({text})", rf"constexpr [^;]*no_network = ({text})",
                            rf'LocationRefusal\{{name, ({text})', rf'({text}),\s*\{{"Enter your'):
                messages.update(literals(found) for found in re.findall(pattern, source))
        return sorted(message.split(r"\r\n")[0].strip() for message in messages)

    def test_has_each_of_them(self):
        told = self.said()
        self.assertGreater(len(told), 65)
        missing = [message for message in told if len(message) > 8 and message not in self.page]
        self.assertEqual(missing, [])

    def sentences(self):
        """The texts of four words and more in those parts of the program where nearly all of them are told to somebody."""
        for folder in ("engine/network", "engine/publish", "engine/setup", "platform", "programs/nimbry", "programs/nimbryd",
                       "programs/nimbryctl"):
            for path in sorted((SOURCES / folder).glob("*.[ch]*")):
                comments, quote = r"//[^\"\n]*$|^\s*//.*$|///<.*$|^#include.*$", r"'\\?\"'"
                source = re.sub(f"{comments}|{quote}", "", path.read_text(), flags=re.M)
                for found in re.findall(r'"(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*', source):
                    line = re.split(r"(?:\\r)?\\n", literals(found))[0].lstrip()
                    if len(re.findall(r"[A-Za-z']+", line)) >= 4 and " " in line:
                        yield line

    def test_has_each_sentence(self):
        # "..." on the page stands for anything.
        entries = [re.compile(re.escape(entry).replace(r"\.\.\.", ".*")) for entry in re.findall(r"`([^`]+)`", self.page)
                   if len(entry.replace("...", "").split()) >= 2]
        said = set(self.sentences())
        self.assertGreater(len(said), 60)
        self.assertEqual(sorted(NO_MESSAGES - said), [])
        missing = [line for line in sorted(said - NO_MESSAGES)
                   if line not in self.page and not any(entry.search(line) for entry in entries)]
        self.assertEqual(missing, [])


def links_of(page):
    """The files that a page leads to."""
    return [(page.parent / target).resolve() for target in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", page.read_text())]


class Links(unittest.TestCase):
    def test_lead_somewhere(self):
        for page in PAGES:
            for target in links_of(page):
                with self.subTest(page=page.name, link=target):
                    self.assertTrue(target.exists())

    def test_of_the_index_lead_to_every_page(self):
        index = SOURCES / "docs" / "README.md"
        pages = set((SOURCES / "docs").rglob("*.md")) - {index}
        self.assertEqual(sorted(pages - set(links_of(index))), [])

    def test_of_the_manual_lead_to_every_page_of_it(self):
        manual = re.findall(r"<file>(\w\S*\.md)</file>", (SOURCES / "docs" / "manual.qrc").read_text())
        manual = [SOURCES / "docs" / name for name in manual]
        linked = {target for page in manual for target in links_of(page)}
        self.assertEqual([page.name for page in manual if page not in linked | {SOURCES / "docs" / "first-steps.md"}], [])


class Pictures(unittest.TestCase):
    def test_are_each_shown_by_a_page(self):
        shown = {path for page in PAGES for path in re.findall(r"\]\([^)]*pictures/([^)/]+)\)", page.read_text())}
        kept = {path.name for path in (SOURCES / "docs" / "pictures").iterdir()}
        self.assertEqual(shown ^ kept, set())

    def test_of_the_help_window_are_in_the_program(self):
        listed = re.findall(r"<file>(.*)</file>", (SOURCES / "docs" / "manual.qrc").read_text())
        for page in filter(lambda name: name.endswith(".md"), listed):
            for path in re.findall(r"\]\((pictures/[^)]+)\)", (SOURCES / "docs" / page).read_text()):
                with self.subTest(page):
                    self.assertIn(path, listed)


class Map(unittest.TestCase):
    """map.md has a word for each folder of the sources."""

    # Folders below which all is of one kind.
    ALIKE = ("assets", "benchmarks", "docs", "fuzz", "packaging", "programs", "tests/engine", "tests/packages", "tests/streams")

    def test_names_each_folder(self):
        listed = subprocess.run(["git", "-C", SOURCES, "ls-files"], capture_output=True, text=True)
        if listed.returncode != 0:
            self.skipTest("the sources are not in a repository")
        folders = {parent.as_posix() for path in listed.stdout.splitlines() for parent in pathlib.PurePath(path).parents} - {"."}
        rows = [line for line in (SOURCES / "docs" / "map.md").read_text().splitlines() if line.startswith("| `")]
        named = {name.rstrip("/") for row in rows for name in re.findall(r"`([^`]+)`", row)}
        named |= {f"engine/{name}" for name in named}  # a row that goes on with the rooms of engine/
        for folder in sorted(folders):
            if not any(folder.startswith(parent + "/") for parent in self.ALIKE):
                with self.subTest(folder):
                    self.assertTrue(any(name == folder or name.startswith(folder + "/") for name in named))


def leave_the_network():
    """Goes on in a network of its own: what the manual sets up must reach nobody, and no copy of another test."""
    enter = ["unshare", "--net"] if os.geteuid() == 0 else ["unshare", "--map-root-user", "--net"]
    if subprocess.run(enter + ["true"], capture_output=True).returncode != 0:
        print("there is no network of one's own to be had here")
        sys.exit(1 if "CI" in os.environ else 77)  # where it has to run, that is a failure
    again = ["sh", "-c", 'ip link set lo up && exec "$0" "$@"', sys.executable, "-B", *sys.argv]
    os.execvpe("unshare", enter + again, os.environ | {"NIMBRY_OWN_NETWORK": "yes"})


if __name__ == "__main__":
    if "NIMBRY_OWN_NETWORK" not in os.environ:
        leave_the_network()
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
