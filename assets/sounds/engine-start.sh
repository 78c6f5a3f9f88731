#!/usr/bin/env bash
# An engine starts: the starter's pinion whines against the compressions, the engine coughs, catches,
# is revved once and falls to its idle. A race begins 1.5 s after its first sample.
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

crank=0.62 # seconds of starter before the engine catches

# whine NAME SHAPE TIMES: the starter's gear at TIMES its pitch, which each of eight compressions drags
# down by 3 % and lets go. A piece lasts whole periods, so the next one begins where it ends.
whine() {
  local pieces=() seconds from to
  while read -r seconds from to; do
    synth "$1-${#pieces[@]}" "$seconds" "$2" "$from:$to"
    pieces+=("$1-${#pieces[@]}.wav")
  done < <(awk -v times="$3" -v crank=$crank '
    function piece(share, from, to,   middle) {
      middle = times * (from + to) / 2
      printf "%.6f %.3f %.3f\n", int(share * crank / 8 * middle + 0.5) / middle, times * from, times * to
    }
    BEGIN {
      for (i = 0; i < 8; i++) {
        hz = 402 + 53 * i / 7
        piece(0.6, hz, hz * 0.97)
        piece(0.4, hz * 0.97, hz + 53 / 7)
      }
    }')
  sox -V1 "${pieces[@]}" "$1.wav"
}
whine whine sawtooth 1
effect whine whine1 synth $crank sine amod 12.9 0 15 lowpass 2600 equalizer 900 1q 6
whine gear square 3
effect gear gear1 synth $crank sine amod 12.9 0 15 bandpass 1300 1o
noise chug 3 $crank lowpass 500
effect chug chug1 synth $crank sine amod 12.9 0 75
layers starter whine1 0.30 gear1 0.14 chug1 1.1
effect starter starter1 fade t 0.02 $crank 0.03

# The engine is one recipe at several speeds: narrow pulses, one for each combustion, uneven from
# cylinder to cylinder, and breath in step with them; and outside the pipe, valves that tick twice as
# often and the hiss of the intake.
# combustion NAME SECONDS FROM TO: combustions per second at its beginning and its end; makes NAME and
# NAME-top. One that slows down is made backwards, because sox falls silent in a falling sweep of pulses.
noise_at=10 # where in the noise the next one's breath is taken from
combustion() {
  local name=$1 seconds=$2 from=$3 to=$4 turn=()
  if awk "BEGIN { exit !($from > $to) }"; then
    from=$4 to=$3 turn=(reverse)
  fi
  synth "$name-a" "$seconds" square "$from/$to" 0 0 14
  synth "$name-b" "$seconds" square "$(times 0.5 "$from")/$(times 0.5 "$to")" 0 30 9
  synth "$name-s" "$seconds" sine "$from/$to"
  noise "$name-c" $noise_at "$seconds" bandpass 900 2o
  effect "$name-c" "$name-d" synth "$seconds" sawtooth amod "$from/$to" 0 50
  layers "$name-e" "$name-a" 0.55 "$name-b" 0.45 "$name-s" 0.35 "$name-d" 0.22
  effect "$name-e" "$name" "${turn[@]}"
  synth "$name-v" "$seconds" square "$(times 2 "$from")/$(times 2 "$to")" 0 0 6 highpass 3500 lowpass 7500
  noise "$name-h" $((noise_at + 3)) "$seconds" highpass 3000 lowpass 8000
  effect "$name-h" "$name-i" synth "$seconds" sawtooth amod "$from/$to" 0 50
  layers "$name-t" "$name-v" 1.0 "$name-i" 0.6
  effect "$name-t" "$name-top" "${turn[@]}"
  noise_at=$((noise_at + 3))
}
times() { awk "BEGIN { print $1 * $2 }"; }

# exhaust NAME EFFECTS...: what combustion made, the pulses through the pipe and its resonances.
exhaust() {
  local name=$1
  shift
  effect "$name" "$name-pipe" equalizer 130 1.0q 7 equalizer 270 1.6q 6 equalizer 560 2q 5 lowpass 1500 \
    overdrive 14 15 lowpass 2600
  layers "$name-all" "$name-pipe" 1.0 "$name-top" 0.30
  effect "$name-all" "$name-out" "$@"
}
combustion cough 0.14 19 24
combustion rise 0.36 26 118
combustion fall 0.60 118 38
exhaust cough fade t 0.004 0.14 0.02
exhaust rise fade t 0.01 0.36 0.015
exhaust fall fade t 0.008 0.60 0.02

# The idle lumps: every second combustion comes early or late, weaker or stronger, by up to 4 %.
pulses=() tops=() slower=0
for uneven in 0 3 -4 1 4 -2 -3 2 -1 4 -4 3 -2; do
  hz=$(awk "BEGIN { print (36 - 0.25 * $slower) * (1 + $uneven / 100) }")
  name=idle$slower slower=$((slower + 1))
  combustion $name "$(awk "BEGIN { print 2 / $hz }")" "$(times 0.998 "$hz")" "$(times 1.002 "$hz")"
  effect $name $name-lump vol "$(awk "BEGIN { print 0.6 * (1 - $uneven / 100) }")"
  pulses+=("$name-lump.wav") tops+=("$name-top.wav")
done
sox -V1 "${pulses[@]}" idle.wav
sox -V1 "${tops[@]}" idle-top.wav vol 0.6
exhaust idle fade t 0.02 0.75 0.60
noise bang 60 0.09 lowpass 900 fade l 0.001 0.09 0.088

sox -V1 cough-out.wav rise-out.wav fall-out.wav idle-out.wav -e float -b 32 engine.wav
effect engine engine1 pad $crank
effect bang bang1 pad $crank
layers both starter1 2.06 engine1 1.0 bang1 1.6
publish both -26.7 equalizer 2600 1q 2 fade t 0 2.3 0.5
