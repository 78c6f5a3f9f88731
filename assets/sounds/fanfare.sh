#!/usr/bin/env bash
# The winner's electronic fanfare: a score (fanfare.song) on synthesisers, with a noise that sweeps up
# into its first and its last beat and bursts there, as dance music announces them.
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

soundfont=/usr/share/sounds/sf3/FluidR3Mono_GM.sf3
[ -r "$soundfont" ] || { echo "$soundfont is missing: install fluidr3mono-gm-soundfont" >&2; exit 1; }

python3 "$here/../../tools/sequencer/sequence.py" "$here/fanfare.song" score.mid >/dev/null
fluidsynth -ni -q -r 44100 -g 0.35 -o synth.dynamic-sample-loading=1 -o synth.chorus.active=0 -T wav -O float -F played.wav \
  "$soundfont" score.mid 2>/dev/null
effect played band remix - compand 0.01,0.2 6:-50,-50,-30,-24,-14,-10,0,-5

lead_in=0.35 # seconds of sweep before the first beat
last=$(awk 'BEGIN { print 7 * 4 * 60 / 144 }') # the last bar's first beat: 7 bars at 144 a minute
noise sweep 3 0.35 highpass 900 lowpass 7000 fade q 0.34 0.35 0.01
noise rise 9 1.6 bandpass 3000 2o fade q 1.55 1.6 0.05
noise burst 20 1.4 highpass 700 fade l 0.002 1.4 1.35
synth boom 0.7 sine 95/45 fade l 0.003 0.7 0.65
effect band band-at pad $lead_in
effect rise rise-at pad "$(awk "BEGIN { print $last + $lead_in - 1.6 }")"
effect burst first-at pad $lead_in
effect boom boom-at pad $lead_in
effect burst burst-at pad "$(awk "BEGIN { print $last + $lead_in }")"
layers all band-at 1.0 sweep 0.13 rise-at 0.10 first-at 0.07 boom-at 0.12 burst-at 0.06
publish all -28.3 fade t 0 15 1.6
