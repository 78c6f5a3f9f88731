#!/usr/bin/env bash
# A grandstand cheers: a few voices are quicker than the roar that swells at once and stays; single
# voices whoop and shout out of it, whistles, and people clapping, each at a pace of their own, until
# many fall into one. A second wave goes through the stand from 3.5 to 5.5 s. 10 s; the game fades it
# from 6 s.
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

seconds=10

# dice LOW HIGH: the next of a repeatable row of chances, in whole numbers, left in $die.
seed=2417
dice() {
  seed=$(((seed * 1103515245 + 12345) % 2147483648))
  die=$(($1 + (seed >> 8) % ($2 - $1 + 1)))
}

# ms COUNT: milliseconds as sox wants them, in seconds.
ms() { printf '%d.%03d' $(($1 / 1000)) $(($1 % 1000)); }

# level NAME DB: NAME brought to DB RMS below full scale, so that the layers' shares are plain figures.
level() {
  local is
  is=$(sox -V1 "$1.wav" -n stats 2>&1 | awk '/^RMS lev dB/ { print $4 }')
  effect "$1" "$1-level" vol "$(awk "BEGIN { print $2 - $is }")dB"
}

# The roar: breath through many throats, in the colours of "a" and "e", heaving.
noise roar-a 2 $seconds bandpass 700 0.6o tremolo 0.37 45
noise roar-b 15 $seconds bandpass 1150 0.5o tremolo 0.53 50
noise roar-c 27 $seconds bandpass 2500 0.7o tremolo 0.29 35
layers roar roar-a 1.0 roar-b 0.8 roar-c 0.3

# A voice is a throat's buzz that glides up to a top note and down again, through the two resonances
# of its vowel (sox knows a falling sweep of a saw only as a straight one).
# voice NAME START_MS LENGTH_MS HZ TOP FORMANT1 FORMANT2
voice() {
  local rise=$(($3 * 35 / 100)) fall=$(($3 * 65 / 100))
  synth up "$(ms $rise)" sawtooth "$4/$5"
  synth down "$(ms $fall)" sawtooth "$5:$(($4 * 85 / 100))"
  sox -V1 up.wav down.wav buzz.wav tremolo 6.3 30
  effect buzz mouth1 bandpass "$6" 0.5o
  effect buzz mouth2 bandpass "$7" 0.45o
  layers mouths mouth1 1 mouth2 0.8
  effect mouths "$1" gain -n -6 fade t 0.06 "$(ms "$3")" 0.2 pad "$(ms "$2")"
}

# choir NAME COUNT LOWEST HIGHEST: COUNT voices between two pitches, Hz. The first third of them breaks
# out together at the beginning, the others follow one by one.
choir() {
  local mix=() i start length pitch top
  for ((i = 1; i <= $2; i++)); do
    dice 0 8300; start=$die
    if [ $((i * 3)) -le "$2" ]; then start=$((start / 9)); fi
    dice 750 1700; length=$die
    dice "$3" "$4"; pitch=$die
    dice 118 175; top=$((pitch * die / 100))
    dice 1 5
    case $die in
      1 | 2) voice "v$i" "$start" "$length" "$pitch" "$top" 760 1250 ;; # "yeah"
      3 | 4) voice "v$i" "$start" "$length" "$pitch" "$top" 400 850 ;;  # "woo"
      *) voice "v$i" "$start" "$length" "$pitch" "$top" 560 1900 ;;     # "hey"
    esac
    dice 25 100
    mix+=("v$i" "$(ms $((die * 9)))")
  done
  layers "$1" "${mix[@]}"
}
choir men 20 130 230
choir women 22 260 470
layers voices men 0.9 women 1.0

# Whistles through fingers.
mix=()
for i in 1 2 3 4 5 6; do
  dice 300 8500; start=$die
  dice 1750 2250; low=$die
  synth up 0.16 sine "$low/$((low * 3 / 2))"
  synth down 0.34 sine "$((low * 3 / 2))/$((low * 11 / 10))"
  sox -V1 up.wav down.wav "w$i.wav" tremolo 17 20 fade t 0.03 0.5 0.12 pad "$(ms $start)"
  mix+=("w$i" 0.5)
done
layers whistles "${mix[@]}"

# Clappers: one pair of hands makes the same clap over and over; many together make applause.
mix=()
for ((i = 1; i <= 24; i++)); do
  dice 850 1900; colour=$die
  dice 10 500; start=$die
  dice 135 260; gap=$die
  dice 35 99; share=$die
  noise clap $((i * 2 + 1)) 0.030 bandpass $colour 1.1o fade l 0.0008 0.030 0.029 pad 0 0.$gap
  effect clap "k$i" repeat 60 pad "$(ms $start)" trim 0 $seconds
  mix+=("k$i" 0.$share)
done
layers claps "${mix[@]}"

# One, two, three: for two seconds in the second wave many hands clap together.
mix=()
for i in 1 2 3 4 5 6 7 8; do
  dice 900 1700; colour=$die
  dice 3560 3600; start=$die
  noise clap $((i * 3 + 20)) 0.030 bandpass $colour 1.1o fade l 0.0008 0.030 0.029 pad 0 0.170
  sox -V1 clap.wav three.wav repeat 2 pad 0 0.2 repeat 2
  effect three "t$i" pad "$(ms $start)"
  mix+=("t$i" 1)
done
layers threes "${mix[@]}"

level roar -28
level voices -21
level whistles -34
level claps -25
level threes -25
# The roar breaks out 0.2 s after the first voices.
effect roar-level roar-late fade t 0.12 pad 0.2 trim 0 $seconds
layers stand roar-late 1 voices-level 1 whistles-level 1 claps-level 1 threes-level 1
# The second wave: more of everything but what is clapped to it.
effect stand wave trim 3.3 2.6 fade t 0.5 2.6 0.7 pad 3.3
layers waved stand 1 wave 0.9
effect waved open trim 0 $seconds reverb 30 60 80 compand 0.05,0.4 6:-40,-32,-20,-17,0,-8
publish open -27.2 highpass 90 fade t 0.08 $seconds 1.5
