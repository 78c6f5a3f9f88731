"""Notes, keys and chords: the letters of a score into MIDI pitches."""

import re

LETTERS = "CDEFGAB"
SEMITONES = (0, 2, 4, 5, 7, 9, 11)
SHARPS_OF_MAJOR = {"Gb": -6, "Db": -5, "Ab": -4, "Eb": -3, "Bb": -2, "F": -1, "C": 0, "G": 1, "D": 2,
                   "A": 3, "E": 4, "B": 5, "F#": 6, "C#": 7, "G#": 8, "D#": 9, "A#": 10}
SHARPS_OF_MODE = {"": 0, "m": -3, "dor": -2, "mix": -1}
QUALITIES = {
    "": (0, 4, 7), "m": (0, 3, 7), "5": (0, 7, 12), "7": (0, 4, 7, 10), "m7": (0, 3, 7, 10),
    "maj7": (0, 4, 7, 11), "sus4": (0, 5, 7), "sus2": (0, 2, 7), "7sus4": (0, 5, 7, 10),
    "6": (0, 4, 7, 9), "m6": (0, 3, 7, 9), "add9": (0, 4, 7, 14), "madd9": (0, 3, 7, 14),
    "9": (0, 4, 10, 14), "m9": (0, 3, 10, 14), "dim": (0, 3, 6), "dim7": (0, 3, 6, 9),
    "aug": (0, 4, 8), "m7b5": (0, 3, 6, 10),
}
UNIT = 240  # ticks of a note without a length: an eighth, at 480 ticks a quarter


class ScoreError(Exception):
    """Something in a score that cannot be played."""


def pitch_class(name):
    """0 to 11 of a name such as C, F# or Bb."""
    return (SEMITONES[LETTERS.index(name[0])] + name.count("#") - name.count("b")) % 12


def key_signature(key):
    """How many semitones each of the seven letters is raised in a key such as A, F#m or Ddor."""
    match = re.fullmatch(r"([A-G][#b]?)(m|dor|mix)?", key)
    if not match:
        raise ScoreError(f"no such key: {key}")
    sharps = SHARPS_OF_MAJOR[match[1]] + SHARPS_OF_MODE[match[2] or ""]
    signature = [0] * 7
    for i in range(abs(sharps)):
        letter = ("FCGDAEB" if sharps > 0 else "BEADGCF")[i % 7]
        signature[LETTERS.index(letter)] += 1 if sharps > 0 else -1
    return signature


class Chord:
    """A symbol such as Bm7 or D/F#: `root` and `bass` as pitch classes, `intervals` above the root."""

    def __init__(self, symbol):
        match = re.fullmatch(r"([A-G][#b]?)([^/]*)(?:/([A-G][#b]?))?", symbol)
        if not match or match[2] not in QUALITIES:
            raise ScoreError(f"no such chord: {symbol}")
        self.symbol = symbol
        self.root = pitch_class(match[1])
        self.bass = pitch_class(match[3]) if match[3] else self.root
        self.intervals = QUALITIES[match[2]]

    def voicings(self, low):
        """Every inversion in close position whose lowest tone lies in the octave above `low`."""
        classes = sorted({(self.root + i) % 12 for i in self.intervals})
        for first in classes:
            bottom = low + (first - low) % 12
            yield sorted(bottom + (c - first) % 12 for c in classes)


TOKEN = re.compile(r"\(3|\[|\]\d*|([\^_=]*)([A-Ga-gz])([,']*)(\d*)(/?)(\d*)(-?)|\s+")


def length_of(digits, slash, divisor):
    """Ticks of ABC's note length: 3, 3/2, / for a half."""
    ticks = UNIT * int(digits or 1)
    return ticks // int(divisor or 2) if slash else ticks


def parse_bar(text, key, shift):
    """The notes of one bar in ABC's letters (an eighth without a length): a list of
    (start, ticks, pitches, tied). `shift` moves each note by that many steps of the key."""
    signature, accidentals = key_signature(key), {}
    notes, at, place, triplet, chord = [], 0, 0, 0, None
    while place < len(text):
        match = TOKEN.match(text, place)
        if not match:
            raise ScoreError(f"what is {text[place:]!r} in {text!r}?")
        place = match.end()
        if match[0] == "(3":
            triplet = 3
        elif match[0] == "[":
            chord = []
        elif match[0][0] == "]":
            ticks = length_of(match[0][1:], "", "")
            notes.append((at, ticks, chord, False))
            at, chord = at + ticks, None
        elif match[2]:
            ticks = length_of(match[4], match[5], match[6])
            if triplet:
                ticks, triplet = ticks * 2 // 3, triplet - 1
            pitch = pitch_of(match, signature, accidentals, shift)
            if chord is not None:
                chord.append(pitch)
                continue
            if pitch is not None:
                notes.append((at, ticks, [pitch], bool(match[7])))
            at += ticks
    return notes, at


def pitch_of(match, signature, accidentals, shift):
    """The MIDI pitch of a matched note, None for a rest. An accidental lasts for its bar."""
    if match[2] == "z":
        return None
    step = LETTERS.index(match[2].upper()) + (7 if match[2].islower() else 0)
    step += 7 * (match[3].count("'") - match[3].count(","))
    if match[1]:
        accidentals[step] = match[1].count("^") - match[1].count("_")
    letter = step % 7
    raised = accidentals.get(step, signature[letter]) - signature[letter]
    step += shift
    return 60 + 12 * (step // 7) + SEMITONES[step % 7] + signature[step % 7] + raised
