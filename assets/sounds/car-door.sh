#!/usr/bin/env bash
# A car door falls shut: the latch clicks, the heavy panel thuds into its rubber, the lock drops in
# and the sheet metal shivers for a moment. All of it is over when the starter begins, after 0.45 s.
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

# The latch's tongue meets the striker.
noise tick 1 0.03 highpass 1800 lowpass 7000 fade l 0.0005 0.03 0.028
synth ring 0.09 sine 2140 sine 3320 remix - fade l 0.0005 0.09 0.088
# The door's mass against the body: a falling bass note, and the air that it pushes.
synth thud 0.42 sine 112/58 fade l 0.003 0.42 0.41
synth thud2 0.26 sine 205/150 fade l 0.002 0.26 0.255
noise air 5 0.30 lowpass 420 lowpass 700 fade l 0.002 0.30 0.295
noise slap 8 0.07 bandpass 900 0.8o fade l 0.0008 0.07 0.068
# The lock's second catch, and the panel that goes on shivering.
noise catch 11 0.035 bandpass 2600 1.2o fade l 0.0005 0.035 0.033
synth panel 0.26 triangle 163 sine 287 sine 431 remix - tremolo 34 60 fade l 0.01 0.26 0.24

for layer in thud thud2 air slap; do effect $layer $layer-at pad 0.035; done
effect catch catch-at pad 0.098
effect panel panel-at pad 0.055
layers dry tick 0.75 ring 0.10 thud-at 1.5 thud2-at 0.45 air-at 3.2 slap-at 1.3 catch-at 1.0 panel-at 0.16
# A street and a house front close by, and one across the street.
effect dry wet overdrive 6 10 echo 0.8 0.9 23 0.16 41 0.10 90 0.10
publish wet -27.5 pad 0 0.05 fade t 0 0.50 0.12
