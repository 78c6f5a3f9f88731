# shellcheck shell=bash
# What the recipes share. A recipe is a bash script that is called as
# "recipe LOUDNESS_TOOL OUT.mp3"; it sources this file, works in a scratch folder with 44,100 Hz mono sound, and ends with "publish".
set -euo pipefail

# shellcheck disable=SC2034 # for recipes that read a file of this folder
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
loudness=$(realpath "$1")
out=$(realpath -m "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# synth NAME SECONDS ARGS...: a layer made of nothing. ARGS are of sox's synth effect and what follows.
synth() {
  local name=$1 seconds=$2
  shift 2
  sox -V1 -R -r 44100 -n -c 1 -e float -b 32 "$name.wav" synth "$seconds" "$@"
}

# noise NAME FROM SECONDS EFFECTS...: white noise. Each piece comes from another place of the same
# endless strip, because sox's noise is repeatable: two layers from one place would add up to one.
noise() {
  local name=$1 from=$2 seconds=$3
  shift 3
  if [ ! -e strip.wav ]; then synth strip 70 whitenoise vol 0.9; fi
  sox -V1 strip.wav "$name.wav" trim "$from" "$seconds" "$@"
}

# effect FROM TO EFFECTS...: the layer FROM through EFFECTS.
effect() {
  local from=$1 to=$2
  shift 2
  sox -V1 "$from.wav" "$to.wav" "$@"
}

# layers NAME A GAIN B GAIN ...: layers, each with its factor, on top of each other.
layers() {
  local name=$1 args=()
  shift
  while [ $# -gt 0 ]; do
    args+=(-v "$2" "$1.wav")
    shift 2
  done
  sox -V1 -m "${args[@]}" -e float -b 32 "$name.wav"
}

# publish NAME LUFS EFFECTS...: the finished sound at the game's 22,050 Hz and so loud by EBU R128.
publish() {
  local name=$1 lufs=$2 is
  shift 2
  sox -V1 "$name.wav" -e float -b 32 shaped.wav highpass 25 "$@" rate -v 22050 gain -n -6
  sox -V1 shaped.wav -b 16 level.raw
  read -r is _ < <("$loudness" level.raw)
  sox -V1 -D shaped.wav -b 16 final.wav vol "$(awk "BEGIN { print $lufs - ($is) }")dB"
  # LAME turns what it is given down to 0.95.
  lame --quiet --noreplaygain --scale 1.0526 -m m -q 2 -b 64 final.wav final.mp3
  mkdir -p "$(dirname "$out")"
  mv final.mp3 "$out"
  echo "$(basename "$out"): $(soxi -D final.wav) s"
}
