#!/usr/bin/env bash
# A grandstand cheers: a roar that swells at once and stays, single voices that whoop and shout out
# of it, whistles, and people clapping, each at a pace of their own. 10 s; the game fades it from 6 s.
# shellcheck source=common.sh
source "$(dirname "$0")/common.sh"

seconds=10

# dice STATE LOW HIGH: the next of a repeatable row of chances, left in $die.
seed=2417
dice() {
  seed=$(((seed * 1103515245 + 12345) % 2147483648))
  die=$(awk -v s=$seed -v a="$1" -v b="$2" 'BEGIN { printf "%.3f", a + (b - a) * s / 2147483648 }')
}

# The roar: breath through many throats, in the colours of "a" and "e", slowly heaving.
noise roar-a 2 $seconds bandpass 720 0.7o tremolo 0.37 35
noise roar-b 15 $seconds bandpass 1180 0.6o tremolo 0.53 40
noise roar-c 27 $seconds bandpass 2500 0.8o tremolo 0.29 35
noise roar-d 39 $seconds lowpass 420
layers roar roar-a 2.4 roar-b 1.8 roar-c 0.55 roar-d 0.5
effect roar roar1 fade t 0.35 $seconds 1.5

# Voices: a throat's buzz that glides up and down, through the two resonances of its vowel.
# voice NAME START SECONDS HZ TOP FORMANT1 FORMANT2
voice() {
  sox -V1 -R -r 44100 -n -c 1 -e float -b 32 up.wav synth "$(awk "BEGIN{print $3*0.35}")" sawtooth "$4/$5"
  sox -V1 -R -r 44100 -n -c 1 -e float -b 32 down.wav synth "$(awk "BEGIN{print $3*0.65}")" sawtooth "$5/$(awk "BEGIN{print $4*0.85}")"
  sox -V1 up.wav down.wav buzz.wav tremolo 6.5 25
  sox -V1 buzz.wav mouth1.wav bandpass "$6" 0.35o
  sox -V1 buzz.wav mouth2.wav bandpass "$7" 0.3o
  sox -V1 -m -v 1 mouth1.wav -v 0.7 mouth2.wav "$1.wav" fade t 0.07 "$3" 0.25 pad "$2"
}
mix=()
for i in $(seq 1 44); do
  dice 0.0 8.2; start=$die
  [ "$i" -le 14 ] && dice 0.0 1.2 && start=$die
  dice 0.7 1.7; length=$die
  dice 150 420; pitch=$die
  dice 1.15 1.7; top=$(awk "BEGIN{print $pitch*$die}")
  dice 0 1
  case $die in
    0.[0-4]*) voice "v$i" "$start" "$length" "$pitch" "$top" 750 1250 ;; # "yeah"
    0.[5-7]*) voice "v$i" "$start" "$length" "$pitch" "$top" 380 850 ;;  # "woo"
    *) voice "v$i" "$start" "$length" "$pitch" "$top" 560 1900 ;;        # "hey"
  esac
  dice 0.25 1.0
  mix+=(-v "$die" "v$i.wav")
done
sox -V1 -m "${mix[@]}" -e float -b 32 voices.wav trim 0 $seconds

# Whistles through fingers.
mix=()
for i in 1 2 3 4 5; do
  dice 0.3 8.5; start=$die
  dice 1700 2300; low=$die
  synth "w$i-a" 0.16 sine "$low/$(awk "BEGIN{print $low*1.5}")"
  synth "w$i-b" 0.34 sine "$(awk "BEGIN{print $low*1.5}")/$(awk "BEGIN{print $low*1.1}")"
  sox -V1 "w$i-a.wav" "w$i-b.wav" "w$i.wav" tremolo 17 20 fade t 0.03 0.5 0.12 pad "$start"
  mix+=(-v 0.5 "w$i.wav")
done
sox -V1 -m "${mix[@]}" -e float -b 32 whistles.wav

# Clappers: one pair of hands makes the same clap over and over; many together make applause.
mix=()
for i in $(seq 1 26); do
  dice 850 1900; colour=$die
  dice 0.0 0.5; start=$die
  dice 0.13 0.24; gap=$die
  dice 0.4 1.0; level=$die
  noise clap "$((i * 2 + 1))" 0.028 bandpass "$colour" 1.1o fade l 0.0008 0.028 0.027 pad 0 "$gap"
  sox -V1 clap.wav "k$i.wav" repeat 60 pad "$start" trim 0 $seconds
  mix+=(-v "$level" "k$i.wav")
done
sox -V1 -m "${mix[@]}" -e float -b 32 claps.wav fade t 0.8 $seconds 1.5

layers stand roar1 0.85 voices 0.16 whistles 0.035 claps 0.75
effect stand open reverb 35 70 80 compand 0.05,0.4 6:-40,-30,-20,-16,0,-8
publish open -3.5 fade t 0.06 $seconds 1.5
