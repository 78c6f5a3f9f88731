"""A song file into records. docs/music.md describes the format."""

import re

from notes import Chord, ScoreError, parse_bar

BAR = 4 * 480  # ticks: all our songs are in four quarters
SETTINGS = {"program": 0, "level": 100, "room": 40, "low": 52, "gate": 95, "strum": 0,
            "vibrato": 0, "later": 0, "soft": 100, "octave": 0}


class Voice:
    """Who plays: `role` is melody, bass, chords, drums or echo, `number` holds its SETTINGS."""

    def __init__(self, words):
        self.name, self.role = words[0], words[1]
        given = dict(word.split("=", 1) for word in words[2:])
        self.of = given.pop("of", None)
        if self.role not in ("melody", "bass", "chords", "drums", "echo") or given.keys() - SETTINGS:
            raise ScoreError(f"voice {self.name}: {' '.join(words[1:])}?")
        self.number = {**SETTINGS, **{key: int(value) for key, value in given.items()}}


class Section:
    """Some bars: `chords` (a list of chords for each bar) and a line of text for each voice."""

    def __init__(self, like=None):
        self.chords = like.chords if like else []
        self.lines = dict(like.lines) if like else {}
        self.up = like.up if like else 0
        self.loud = like.loud if like else (100, 100)


class Song:
    def __init__(self, path):
        self.title, self.tempo, self.key = "", 120.0, "C"
        self.swing = (16, 50)  # of which notes, and the share of a pair that its first one takes
        self.voices, self.patterns, self.beats, self.tunes = {}, {}, {}, {}
        self.sections, self.order, self.section, self.beat = {}, [], None, None
        with open(path, encoding="utf-8") as file:
            for number, line in enumerate(file, 1):
                try:
                    self.read(line.split("%")[0].rstrip())
                except (ScoreError, ValueError, KeyError, IndexError) as fault:
                    raise ScoreError(f"{path}:{number}: {fault!r}") from fault

    def read(self, line):
        if not line.strip():
            return
        word, _, rest = line.strip().partition(" ")
        rest = rest.strip()
        if line[0] == " ":
            self.read_inner(word, rest)
            return
        self.section = self.beat = None
        getattr(self, "read_" + word)(rest)

    def read_inner(self, word, rest):
        if self.beat is not None:
            self.beat[word] = rest.replace(" ", "")
        elif word == "chords":
            self.section.chords = [[Chord(c) for c in bar.split()] for bar in spelled_out(rest)]
        elif word == "up":
            self.section.up = int(rest)
        elif word == "loud":
            first, _, last = rest.partition(">")
            self.section.loud = (int(first), int(last or first))
        elif word.partition("@")[0] in self.voices:
            name, _, share = word.partition("@")
            self.section.lines[name] = (rest, int(share or 100))
        else:
            raise ScoreError(f"no voice is called {word}")

    def read_title(self, rest):
        self.title = rest

    def read_tempo(self, rest):
        self.tempo = float(rest)

    def read_key(self, rest):
        self.key = rest

    def read_swing(self, rest):
        self.swing = tuple(int(number) for number in rest.split())

    def read_voice(self, rest):
        voice = Voice(rest.split())
        self.voices[voice.name] = voice

    def read_pattern(self, rest):
        name, _, steps = rest.partition(" ")
        self.patterns[name] = steps.replace(" ", "")

    def read_beat(self, rest):
        name, _, like = rest.partition("<")
        self.beat = dict(self.beats[like.strip()]) if like else {}
        self.beats[name.strip()] = self.beat

    def read_tune(self, rest):
        name, _, bars = rest.partition(" ")
        self.tunes[name] = [bar.strip() for bar in bars.split("|")]

    def read_section(self, rest):
        name, _, like = rest.partition("<")
        self.section = Section(self.sections[like.strip()] if like else None)
        self.sections[name.strip()] = self.section

    def read_order(self, rest):
        self.order += [self.sections[name] for name in rest.split()]

    def melody_bars(self, line):
        """The bars of a melody line, each (notes, ticks, fit), with reused tunes and rests spelled
        out. A `fit` of under, over or fit moves each note to a tone of its chord."""
        for item in line.split("|"):
            words = item.split()
            if re.fullmatch(r"Z\d*", item.strip()):
                yield from [([], BAR, None)] * int(item.strip()[1:] or 1)
            elif words[0][0] == ":":
                yield from self.tune_bars(words[0][1:], words[1:])
            else:
                yield *parse_bar(item, self.key, 0), None

    def tune_bars(self, name, changes):
        """A tune, or its bars NAME.FIRST-LAST; a change is +N semitones, ~N steps of the key, or
        a fit."""
        name, _, bars = name.partition(".")
        first, _, last = bars.partition("-")
        chosen = self.tunes[name]
        if first:
            chosen = chosen[int(first) - 1:int(last or first)]
        fit = next((c for c in changes if c in ("under", "over", "fit")), None)
        semitones = sum(int(c) for c in changes if c[0] in "+-")
        steps = sum(int(c[1:]) for c in changes if c[0] == "~")
        for bar in chosen:
            notes, ticks = parse_bar(bar, self.key, steps)
            yield [(at, n, [p + semitones for p in ps], tied) for at, n, ps, tied in notes], ticks, fit


def spelled_out(text):
    """Bars between bar lines; % is not needed, an empty bar repeats the last one."""
    bars = []
    for bar in text.split("|"):
        bars.append(bar.strip() or bars[-1])
    return bars
