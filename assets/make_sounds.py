#!/usr/bin/env python3
"""Makes the program's two sounds, 16-bit mono WAV files in assets/sounds.

    make_sounds.py           writes them
    make_sounds.py --check   tells whether they are what this script makes (exit status 1 if not)

click.WAV sounds with every click on a menu entry or a button, so it is short and soft: a wooden tick of two quickly
fading tones. Nimbry.WAV sounds with every alarm: a chime of two bell tones, a fourth upward, that is heard in the next
room and frightens nobody.
"""
import io
import math
import pathlib
import struct
import sys
import wave

FOLDER = pathlib.Path(__file__).parent / "sounds"
FULL = 32767


def tone(at, frequency, loudness, half_life):
    """One fading tone, `at` seconds after it was struck. It swells over 2 ms: a start at full height would crackle."""
    if at < 0:
        return 0.0
    return loudness * min(1.0, at / 0.002) * 0.5 ** (at / half_life) * math.sin(2 * math.pi * frequency * at)


def bell(at, frequency, loudness):
    """A fundamental with three partials; the higher ones fade sooner."""
    partials = ((1.0, 1.0, 0.28), (2.0, 0.35, 0.14), (2.76, 0.18, 0.07), (5.4, 0.06, 0.03))
    return sum(tone(at, frequency * ratio, loudness * part, life) for ratio, part, life in partials)


def click(at):
    return tone(at, 1900, 0.30, 0.0045) + tone(at, 3250, 0.14, 0.0025)


def chime(at):
    return bell(at, 784.0, 0.32) + bell(at - 0.24, 1046.5, 0.32)  # G, then the C above


def samples(sound, seconds, rate):
    """The sound's samples; the last 10 ms fade to nothing, so that the end makes no noise of its own."""
    count = round(seconds * rate)
    return [round(FULL * sound(n / rate) * min(1.0, (count - n) / (0.01 * rate))) for n in range(count)]


def wav(values, rate):
    held = io.BytesIO()
    with wave.open(held, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(struct.pack("<%dh" % len(values), *values))
    return held.getvalue()


def differs(one, other):
    """True unless two files are alike; a sample may be one off, as the sine of another machine's library may."""
    if len(one) != len(other) or one[:44] != other[:44]:
        return True
    pairs = zip(struct.iter_unpack("<h", one[44:]), struct.iter_unpack("<h", other[44:]))
    return any(abs(a[0] - b[0]) > 1 for a, b in pairs)


def main():
    sounds = {
        "click.WAV": wav(samples(click, 0.06, 44100), 44100),
        "Nimbry.WAV": wav(samples(chime, 1.6, 22050), 22050),
    }
    if sys.argv[1:] == ["--check"]:
        wrong = [name for name, made in sounds.items() if differs((FOLDER / name).read_bytes(), made)]
        for name in wrong:
            print(f"{name} is not what make_sounds.py makes")
        return 1 if wrong else 0
    FOLDER.mkdir(exist_ok=True)
    for name, made in sounds.items():
        (FOLDER / name).write_bytes(made)
    return 0


if __name__ == "__main__":
    sys.exit(main())
