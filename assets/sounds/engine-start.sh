#!/usr/bin/env bash
# An engine starts: the starter's pinion whines against the compressions, the engine coughs, catches,
# is revved once and falls to its idle. A race begins 1.5 s after its first sample.
# shellcheck source=common.sh
source "$(dirname "$0")/common.sh"

crank=0.62 # seconds of starter before the engine catches

# The starter: a gear's whine that sags with each compression stroke, 12 of them a second.
synth whine $crank sawtooth 402:455
effect whine whine1 synth $crank sine amod 12.5:14 0 58 lowpass 2600 equalizer 900 1q 6
synth gear $crank square 1206:1365
effect gear gear1 synth $crank sine amod 12.5:14 0 40 bandpass 1300 1o
noise chug 3 $crank lowpass 500
effect chug chug1 synth $crank sine amod 12.5:14 0 20
layers starter whine1 0.30 gear1 0.14 chug1 1.1
effect starter starter1 fade t 0.02 $crank 0.03

# The engine itself is one recipe at three speeds: pulses through an exhaust, with their breath.
# stroke NAME SECONDS FROM TO: firing frequency FROM to TO, Hz.
stroke() {
  local name=$1 seconds=$2 from=$3 to=$4
  synth "$name-a" "$seconds" sawtooth "$from/$to"
  synth "$name-b" "$seconds" square "$(awk "BEGIN{print $from/2}")/$(awk "BEGIN{print $to/2}")" 0 0 30
  noise "$name-c" "$((RANDOM % 1 + ${from%.*} % 40 + 10))" "$seconds" lowpass 2400
  effect "$name-c" "$name-d" synth "$seconds" sawtooth amod "$from/$to"
  layers "$name-e" "$name-a" 0.5 "$name-b" 0.45 "$name-d" 0.75
  effect "$name-e" "$name" overdrive 18 20 lowpass 1900 equalizer 95 1.2q 6 equalizer 420 1q 3
}
stroke cough 0.10 30 48
stroke rise 0.34 46 158
stroke fall 0.55 158 62
stroke idle 0.75 60 57
noise bang 40 0.09 lowpass 900 fade l 0.001 0.09 0.088

effect cough cough1 fade t 0.004 0.10 0.02
effect rise rise1 fade t 0.01 0.34 0.015
effect fall fall1 fade t 0.008 0.55 0.02
effect idle idle1 fade t 0.02 0.75 0.60
sox -V1 cough1.wav rise1.wav fall1.wav idle1.wav -e float -b 32 engine.wav
effect engine engine1 pad $crank
effect bang bang1 pad $crank
layers both starter1 0.9 engine1 1.0 bang1 2.2
publish both -3 equalizer 2600 1q 2 fade t 0 2.3 0.5
