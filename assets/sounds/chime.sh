#!/usr/bin/env bash
# "Well done": four bell notes climb a C major chord, the last of them rings.
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "$0")/common.sh"

# bell NAME HZ SECONDS: a struck bar: its tone, the overtones that die away sooner, and the mallet.
bell() {
  local name=$1 hz=$2 seconds=$3
  local half quick
  half=$(awk "BEGIN{print $seconds*0.55}")
  quick=$(awk "BEGIN{print $seconds*0.22}")
  synth "$name-1" "$seconds" sine "$hz" fade l 0.002 "$seconds" "$seconds"
  synth "$name-2" "$half" sine "$(awk "BEGIN{print $hz*2.005}")" fade l 0.001 "$half" "$half"
  synth "$name-4" "$quick" sine "$(awk "BEGIN{print $hz*3.98}")" fade l 0.001 "$quick" "$quick"
  synth "$name-m" 0.02 triangle "$(awk "BEGIN{print $hz*6.3}")" fade l 0.001 0.02 0.019
  layers "$name" "$name-1" 1.0 "$name-2" 0.38 "$name-4" 0.22 "$name-m" 0.25
}
bell c 1046.50 0.8
bell e 1318.51 0.8
bell g 1567.98 0.9
bell high 2093.00 2.0
bell under 1046.50 1.8

effect e e1 pad 0.085
effect g g1 pad 0.170
effect high high1 pad 0.270
effect under under1 pad 0.270
layers all c 0.6 e1 0.65 g1 0.7 high1 0.85 under1 0.35
effect all wide reverb 28 60 40
publish wide -23.6 fade t 0 1.6 0.4
