#!/usr/bin/env bash
# An engine starts: the starter's pinion whines against the compressions, the engine coughs, catches,
# is revved once and falls to its idle. A race begins 1.5 s after its first sample.
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

crank=0.62 # seconds of starter before the engine catches

# The starter: a gear's whine that sags with each compression, 12.5 of them a second: between two of
# them it gains the 4 % that it loses at the next.
whines=() gears=()
for i in 0 1 2 3 4 5 6 7; do
  hz=$((402 + 6 * i))
  synth "whine-$i" 0.08 sawtooth "$((hz * 98 / 100)):$((hz * 102 / 100))"
  synth "gear-$i" 0.08 square "$((hz * 294 / 100)):$((hz * 306 / 100))"
  whines+=("whine-$i.wav") gears+=("gear-$i.wav")
done
sox -V1 "${whines[@]}" whine.wav trim 0 $crank
sox -V1 "${gears[@]}" gear.wav trim 0 $crank
effect whine whine1 synth $crank sine amod 12.5:14 0 58 lowpass 2600 equalizer 900 1q 6
effect gear gear1 synth $crank sine amod 12.5:14 0 40 bandpass 1300 1o
noise chug 3 $crank lowpass 500
effect chug chug1 synth $crank sine amod 12.5:14 0 20
layers starter whine1 0.30 gear1 0.14 chug1 1.1
effect starter starter1 fade t 0.02 $crank 0.03

# The engine itself is one recipe at several speeds: narrow pulses, one for each combustion, uneven
# from cylinder to cylinder, through the resonances of an exhaust; breath in step with them, and above
# the exhaust the valves' ticking and the hiss of the intake.
# stroke NAME SECONDS FROM TO: combustions per second at its beginning and its end.
# A stroke that slows down is made backwards, because sox falls silent in a falling sweep of pulses.
noise_at=4 # where in the noise the next stroke's breath is taken from
stroke() {
  local name=$1 seconds=$2 from=$3 to=$4 turn=()
  if [ "$from" -gt "$to" ]; then
    from=$4 to=$3 turn=(reverse)
  fi
  synth "$name-a" "$seconds" square "$from/$to" 0 0 14
  synth "$name-b" "$seconds" square "$(half "$from")/$(half "$to")" 0 30 9
  synth "$name-s" "$seconds" sine "$from/$to"
  noise "$name-c" $noise_at "$seconds" bandpass 900 2o
  noise_at=$((noise_at + 2))
  effect "$name-c" "$name-d" synth "$seconds" sawtooth amod "$from/$to" 0 50
  layers "$name-e" "$name-a" 0.55 "$name-b" 0.45 "$name-s" 0.35 "$name-d" 0.22
  effect "$name-e" "$name-f" "${turn[@]}" equalizer 130 1.0q 7 equalizer 270 1.6q 6 \
    equalizer 560 2q 5 lowpass 1500 overdrive 14 15 lowpass 2600
  noise "$name-g" $noise_at "$seconds" highpass 3000 lowpass 8000
  noise_at=$((noise_at + 2))
  effect "$name-g" "$name-h" synth "$seconds" square amod "$from/$to" 0 20 30 "${turn[@]}"
  layers "$name" "$name-f" 1.0 "$name-h" 0.16
}
half() { awk "BEGIN { print $1 / 2 }"; }
stroke cough 0.14 19 24
stroke rise 0.36 26 118
stroke fall 0.60 118 38
# At its idle no stroke is like the last, neither in length nor in strength.
lumps=()
at=0
for lump in 36:60 34:52 37:64 35:55 33:50 36:62 34:54 32:48; do
  at=$((at + 1))
  stroke "lump$at" 0.094 "${lump%:*}" "$((${lump%:*} + 1))"
  effect "lump$at" "lump$at-low" vol "0.${lump#*:}" fade t 0.002 0.094 0.004
  lumps+=("lump$at-low.wav")
done
sox -V1 "${lumps[@]}" idle-low.wav
noise bang 60 0.09 lowpass 900 fade l 0.001 0.09 0.088

effect cough cough1 fade t 0.004 0.14 0.02
effect rise rise1 fade t 0.01 0.36 0.015
effect fall fall1 fade t 0.008 0.60 0.02
effect idle-low idle1 fade t 0.02 0.75 0.60
sox -V1 cough1.wav rise1.wav fall1.wav idle1.wav -e float -b 32 engine.wav
effect engine engine1 pad $crank
effect bang bang1 pad $crank
layers both starter1 2.05 engine1 1.0 bang1 1.6
publish both -26.6 equalizer 2600 1q 2 fade t 0 2.3 0.5
