#!/usr/bin/env python3
"""sequence.py SONG OUT.mid: writes a song as a MIDI file and prints its length in seconds.
sequence.py --facts SONG...: prints how much music is in each song, and fails if it is too little."""

import sys

import midi
from arrange import Arranger
from notes import ScoreError
from song import BAR, Song

# What a song that loops has at least, so that nobody tires of it: distinct bars.
ENOUGH = {"drums": 12, "bass": 20, "melody": 24}
VOLUME, PAN, REVERB, WHEEL = 7, 10, 91, 1


def controls(voice, notes):
    """The channel's settings, and a vibrato that comes up late in long notes."""
    number = voice.number
    out = [(0, VOLUME, number["level"]), (0, PAN, 64), (0, REVERB, number["room"]),
           (0, WHEEL, 0)]
    if number["vibrato"]:
        for tick, ticks, _, _ in notes:
            if ticks >= 600:
                out += [(tick, WHEEL, 0), (tick + 300, WHEEL, number["vibrato"] // 2),
                        (tick + 420, WHEEL, number["vibrato"]), (tick + ticks, WHEEL, 0)]
    return out


def write(song, notes, path):
    tracks, channel = [], 0
    for voice in song.voices.values():
        drums = voice.role == "drums"
        mine = notes[voice.name]
        tracks.append(midi.voice_track(9 if drums else channel, voice.number["program"],
                                       controls(voice, mine), mine))
        channel += 0 if drums else 2 if channel == 8 else 1
    with open(path, "wb") as file:
        file.write(midi.file(song.tempo, tracks))


def distinct_bars(notes, of, bars):
    """How many bars of the voices `of` differ in what is struck when."""
    seen = set()
    for bar in range(bars):
        seen.add(tuple((name, tick - bar * BAR, pitch) for name in of
                       for tick, _, pitch, _ in sorted(notes[name])
                       if bar * BAR <= tick < (bar + 1) * BAR))
    return len(seen)


def facts(song, notes, end):
    """A line about a song, and whether it is music enough."""
    bars = end // BAR
    counts = {role: distinct_bars(notes, [v.name for v in song.voices.values() if v.role == role],
                                  bars) for role in ENOUGH}
    enough = all(counts[role] >= least for role, least in ENOUGH.items())
    counts["all"] = distinct_bars(notes, list(song.voices), bars)
    return enough, (f"{'ok   ' if enough else 'WRONG'}  {song.title}: {bars} bars, "
                    f"{end / 480 * 60 / song.tempo:.0f} s; distinct bars: " +
                    ", ".join(f"{role} {count}" for role, count in counts.items()))


def played(path):
    song = Song(path)
    arranger = Arranger(song)
    end = arranger.play()
    return song, arranger.notes, end


def main(arguments):
    if arguments[:1] == ["--facts"]:
        told = [facts(*played(path)) for path in arguments[1:]]
        print("\n".join(line for _, line in told))
        return 0 if all(enough for enough, _ in told) else 1
    song, notes, end = played(arguments[0])
    write(song, notes, arguments[1])
    print(end / 480 * 60 / song.tempo)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except ScoreError as fault:
        sys.exit(str(fault))
