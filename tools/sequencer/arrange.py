"""A song's lines into notes: each voice a list of (tick, ticks, pitch, velocity)."""

import random

from notes import ScoreError
from song import BAR

DRUMS = {"kick": 36, "snare": 38, "rim": 37, "clap": 39, "hat": 42, "pedal": 44, "open": 46,
         "crash": 49, "crash2": 57, "splash": 55, "china": 52, "ride": 51, "bell": 53, "tom1": 50,
         "tom2": 48, "tom3": 47, "tom4": 45, "floor": 41, "tamb": 54, "cow": 56, "shaker": 70,
         "cabasa": 69, "wood": 76, "wood2": 77, "hoof": 115, "conga": 63, "conga2": 64, "brush": 38}
STROKES = {"X": 122, "x": 100, "o": 62, "r": 84}  # r: a double stroke
# Struck softly: they lie where tyres are heard.
BRIGHT = {"hat", "open", "pedal", "ride", "bell", "shaker", "tamb"}
DEGREES = {"1": 0, "2": 2, "4": 5, "6": 9, "8": 12, "b": -5}


def listed(line):
    """Names one by one of a list such as "train*3 fill"."""
    for word in line.split():
        name, _, times = word.partition("*")
        yield from [name] * int(times or 1)


def fitted(pitch, chord, fit):
    """The chord's tone at or below a pitch (fit), or the nearest a third or more under or over it."""
    if fit is None:
        return pitch
    first, step = {"fit": (0, -1), "under": (-3, -1), "over": (3, 1)}[fit]
    tones = {(chord.root + i) % 12 for i in chord.intervals}
    return next(p for p in range(pitch + first, pitch + first + 12 * step, step) if p % 12 in tones)


class Arranger:
    """Plays one song. Small unevennesses of touch are the same at every run."""

    def __init__(self, song):
        self.song = song
        self.chance = random.Random(song.title)
        self.notes = {name: [] for name in song.voices}
        self.voicing = {}

    def play(self):
        at = 0
        for section in self.song.order:
            bars = len(section.chords)
            for name, (line, share) in section.lines.items():
                voice = self.song.voices[name]
                touch = [self.touch(section, share, bar, bars) for bar in range(bars)]
                getattr(self, voice.role)(voice, line, section, at, touch)
            at += bars * BAR
        for voice in self.song.voices.values():
            if voice.role == "echo":
                self.echo(voice, at)
        return at

    def touch(self, section, share, bar, bars):
        """How loud a bar of a section is played, 1 as a rule."""
        first, last = section.loud
        return share / 100 * (first + (last - first) * bar / max(1, bars - 1)) / 100

    def add(self, voice, tick, ticks, pitch, velocity):
        velocity = max(1, min(127, round(velocity + self.chance.uniform(-4, 4))))
        self.notes[voice.name].append((tick + self.late(tick), max(20, ticks), pitch, velocity))

    def late(self, tick):
        """Ticks by which the second note of a pair comes late when the song swings."""
        notes, share = self.song.swing
        pair = 2 * BAR // notes
        return round(pair * (share - 50) / 100) if tick % pair == pair // 2 else 0

    # --- melodies

    def melody(self, voice, line, section, at, touch):
        bars = list(self.song.melody_bars(line))
        if len(bars) != len(touch):
            raise ScoreError(f"{voice.name}: {len(bars)} bars for {len(touch)} of chords: {line}")
        held = {}
        for bar, (notes, ticks, fit) in enumerate(bars):
            if ticks != BAR:
                raise ScoreError(f"{voice.name}: bar {bar + 1} has {ticks} ticks of {BAR}: {line}")
            for start, length, pitches, tied in notes:
                chord = self.chord_at(section, bar, start)
                for pitch in pitches:
                    pitch = fitted(pitch, chord, fit) + section.up + 12 * voice.number["octave"]
                    self.sing(voice, at + bar * BAR + start, length, pitch, tied, touch[bar], held)
        for pitch, (tick, length, velocity) in held.items():
            self.add(voice, tick, length, pitch, velocity)

    def sing(self, voice, tick, length, pitch, tied, touch, held):
        accent = 8 if tick % BAR == 0 else 4 if tick % 480 == 0 else 0
        first, before, velocity = held.pop(pitch, (tick, 0, (92 + accent) * touch))
        length += before
        if tied:
            held[pitch] = (first, length, velocity)
        else:
            self.add(voice, first, length * voice.number["gate"] // 100, pitch, velocity)

    # --- patterns over chords

    def steps(self, line, table, touch):
        """(bar, steps as text) for each bar of a list of patterns, which starts again at its end."""
        names = list(listed(line))
        for bar in range(len(touch)):
            yield bar, table[names[bar % len(names)]]

    def runs(self, steps):
        """(step, sign, how many steps it sounds) of a pattern; "-" holds on, "." is a rest."""
        for i, sign in enumerate(steps):
            if sign in ".-":
                continue
            length = 1
            while i + length < len(steps) and steps[i + length] == "-":
                length += 1
            yield i, sign, length

    def chord_at(self, section, bar, tick):
        chords = section.chords[bar % len(section.chords)]
        return chords[tick * len(chords) // BAR]

    def bass(self, voice, line, section, at, touch):
        for bar, steps in self.steps(line, self.song.patterns, touch):
            size = BAR // len(steps)
            for i, sign, length in self.runs(steps):
                chord = self.chord_at(section, bar, i * size)
                follows = self.chord_at(section, (bar + (i + length) * size // BAR),
                                        (i + length) * size % BAR)
                pitch = self.bass_pitch(voice, chord, follows, sign, section.up)
                accent = 10 if i * size % 480 == 0 else 0
                self.add(voice, at + bar * BAR + i * size,
                         length * size * voice.number["gate"] // 100, pitch,
                         (88 + accent) * touch[bar])

    def bass_pitch(self, voice, chord, follows, sign, up):
        low = voice.number["low"]
        root = low + (chord.bass + up - low) % 12
        if sign in "<>":
            target = low + (follows.bass + up - low) % 12
            return target + (1 if sign == ">" else -1)
        if sign in DEGREES:
            return root + DEGREES[sign]
        above = (chord.root - chord.bass) % 12
        tones = {"3": chord.intervals[1] if chord.intervals[1] < 5 else 4,
                 "5": next((i for i in (7, 6, 8) if i in chord.intervals), 7),
                 "7": next((i for i in (10, 11, 9) if i in chord.intervals), 10)}
        # Over a bass that is not the root, the chord's tones are taken from its root.
        return root + (above + tones[sign]) % 12

    def chords(self, voice, line, section, at, touch):
        for bar, steps in self.steps(line, self.song.patterns, touch):
            size = BAR // len(steps)
            for i, sign, length in self.runs(steps):
                tones = self.voiced(voice, self.chord_at(section, bar, i * size), section.up)
                tick, ticks = at + bar * BAR + i * size, length * size * voice.number["gate"] // 100
                if sign in "xXo":
                    velocity = {"x": 84, "X": 104, "o": 60}[sign] * touch[bar]
                    for string, pitch in enumerate(tones):
                        self.add(voice, tick + string * voice.number["strum"], ticks, pitch, velocity)
                else:
                    turn, tone = divmod(int(sign, 16) - 1, len(tones))
                    accent = 8 if i * size % 480 == 0 else 0
                    self.add(voice, tick, ticks, tones[tone] + 12 * turn, (84 + accent) * touch[bar])

    def voiced(self, voice, chord, up):
        """The inversion that moves least from the chord before."""
        low = voice.number["low"]
        before = self.voicing.get(voice.name) or [low + 4, low + 8, low + 11]
        choices = [[pitch + up % 12 for pitch in tones] for tones in chord.voicings(low - up % 12)]

        def way(tones):
            middle = sum(tones) / len(tones)
            return abs(middle - sum(before) / len(before)) + sum(
                min(abs(t - b) for b in before) for t in tones) + 0.5 * abs(middle - low - 8)
        self.voicing[voice.name] = min(choices, key=way)
        return self.voicing[voice.name]

    # --- drums and echoes

    def drums(self, voice, line, _section, at, touch):
        """A list of beats; "beat+crash" lays a second beat over the first."""
        names = list(listed(line))
        for bar in range(len(touch)):
            for name in names[bar % len(names)].split("+"):
                for drum, steps in self.song.beats[name].items():
                    weight = touch[bar] * (0.8 if drum in BRIGHT else 1)
                    self.strike(voice, DRUMS[drum], steps, at + bar * BAR, weight)

    def strike(self, voice, pitch, steps, at, touch):
        size = BAR // len(steps)
        for i, sign, length in self.runs(steps):
            velocity = STROKES[sign] * touch
            self.add(voice, at + i * size, size * length, pitch, velocity)
            if sign == "r":
                self.add(voice, at + i * size + size // 2, size // 2, pitch, velocity * 0.9)

    def echo(self, voice, end):
        """Repeats another voice, later by some sixteenths, round the loop's end."""
        for tick, ticks, pitch, velocity in self.notes[voice.of]:
            later = (tick + voice.number["later"] * 120) % end
            soft = max(1, velocity * voice.number["soft"] // 100)
            self.notes[voice.name].append((later, min(ticks, end - later),
                                           pitch + 12 * voice.number["octave"], soft))
