# What run-all-levels and check-emulated share.

fail() {
  echo "$(basename "$0"): $2" >&2
  exit "$1"
}

# The programs of a build.
programs_of() {
  [[ -x $1/bin/KivFisheyeFrames && -x $1/bin/KivFisheyeForcedTests ]] ||
    fail 1 "$1 holds no build with tests"
  bin=$1/bin
  native_level=$("$bin/KivFisheyeFrames" | sed -n '1s/^level //p')
}

# Whether this machine can run the kernels that a processor of the level takes: those of level 5 and 6
# are the same, and so are those of 7 and 8.
can_force() {
  (($1 < 5 || ($1 < 7 && native_level >= 5) || native_level >= 7))
}
