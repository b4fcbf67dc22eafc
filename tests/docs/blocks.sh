# What the checks of the documents share.

# Writes the fenced blocks of a language in a document to DIR/1, DIR/2 and so on, and the lines of the document
# where they begin to DIR/lines, one for each: write_blocks LANGUAGE DOCUMENT DIR.
write_blocks() {
  rm -rf "$3"
  mkdir -p "$3"
  : >"$3/lines"
  awk -v fence='```'"$1" -v dir="$3" '
    $0 == "```" && block { close(file); block = 0; next }
    block { print > file }
    $0 == fence { block = 1; file = dir "/" ++count; printf "" > file; print NR + 1 > (dir "/lines") }
    END { if (block) { print FILENAME ": a block has no end" > "/dev/stderr"; exit 1 } }
  ' "$2"
}
