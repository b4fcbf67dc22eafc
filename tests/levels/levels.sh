# What run-all-levels, check-emulated and check-compilers share.

fail() {
  echo "$(basename "$0"): $2" >&2
  exit "$1"
}

# help_if_asked "$@": prints the comment that the script starts with, and ends it.
help_if_asked() {
  [[ ${1:-} == -h || ${1:-} == --help ]] || return 0
  sed -n '2,/^set/{/^# */s///p}' "$0"
  exit 0
}

# The programs of a build.
programs_of() {
  local program frames
  for program in KivFisheyeTests KivFisheyeForcedTests KivFisheyeFrames KivFisheyeForcedFrames; do
    [[ -x $1/bin/$program ]] || fail 1 "$1 holds no build with tests: bin/$program is missing"
  done
  bin=$1/bin
  frames=$("$bin/KivFisheyeFrames") || fail 1 "KivFisheyeFrames ended with status $?"
  native_level=$(sed -n '1s/^level //p' <<<"$frames")
  [[ -n $native_level ]] || fail 1 "KivFisheyeFrames tells no level"
}

# tell_failures LOG STATUS: what went wrong in a test program. One that ended before it had run all of
# its tests has told of none.
tell_failures() {
  grep -A 12 ': Failure$' "$1" | head -n 60 || true
  sed -n '/^\[  FAILED  \]/p' "$1" | sort -u
  if ! grep -q '^\[==========\] .* ran\.' "$1"; then
    echo "It ended early, with status $2. These are its last lines:"
    tail -n 12 "$1"
  fi
}

# Whether this machine can run the kernels that a processor of the level takes: those of level 5 and 6
# are the same, and so are those of 7 and 8.
can_force() {
  (($1 < 5 || ($1 < 7 && native_level >= 5) || native_level >= 7))
}
