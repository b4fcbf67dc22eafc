# For scripts whose second line is a comment that starts with how they are called, up to a colon.

# Says that, and ends the script.
usage() {
  sed -n '2{s/^# /usage: /;s/: [^:]*$//p}' "$0" >&2
  exit 2
}
