# What the Debian packages do once they are installed, for check-packages.

check_that_nothing_is_there_yet() {
  local path
  while read -r path; do
    [[ ! -e $path && ! -L $path ]] || fail "$path is here already, and would be replaced"
  done <"$work/paths"
}

check_that_all_is_gone() {
  local path left=()
  while read -r path; do
    [[ ! -e $path && ! -L $path ]] || left+=("$path")
  done <"$work/paths"
  ((${#left[@]} == 0)) || fail "these are left after the packages were removed: ${left[*]}"
  ! /sbin/ldconfig -p | grep -F libKivFisheye >&2 || fail "the linker's cache still has the library"
}

# The library is found by its soname, and exports what it should.
check_library() {
  local library=$libdir/libKivFisheye.so.$version
  "$here/check-soname" "$library" "$soname" || fail "the soname of $library is not $soname"
  "$here/check-exports" "$library" "$here/exported-symbols-$(uname -m).txt" >&2 ||
    fail "the library should export exactly the names of the list"
  [[ $(/sbin/ldconfig -p | awk -v name="$soname" '$1 == name { print $NF }' | xargs -r realpath) == "$library" ]] ||
    fail "the linker's cache does not lead from $soname to $library"
  ! readelf -d /usr/bin/kivfisheye "$library" | grep -E 'RPATH|RUNPATH' >&2 ||
    fail "what is installed looks for libraries in folders of its own"
}

# Prints a file of a package. Small systems do not unpack what people read.
packed_file() { dpkg-deb --fsys-tarfile "$(file_of "$1")" | tar -xO ".$2"; }

# check_version PLACE VERSION
check_version() { [[ $2 == "$version" ]] || fail "$1 has version '$2', not $version"; }

check_versions() {
  local header=/usr/include/KivFisheye/KivFisheyeVersion.h package page
  for package in "${packages[@]}"; do
    check_version "$package" "$(dpkg-query -W -f '${Version}' "$package")"
    check_version "the newest change in $package" \
      "$(packed_file "$package" "/usr/share/doc/$package/changelog.gz" |
        zcat | sed -n 's/^## \([^ ]*\).*/\1/p' | head -n 1)"
  done
  for page in kivfisheye "${commands[@]/#/kivfisheye-}"; do
    check_version "the manual page of $page" \
      "$(packed_file kivfisheye-tools "/usr/share/man/man1/$page.1.gz" |
        zcat | sed -n '/^\.TH/s/.*"kivfisheye \([^"]*\)".*/\1/p')"
  done
  check_version "KIVFISHEYE_VERSION" "$(sed -n 's/^#define KIVFISHEYE_VERSION "\(.*\)"$/\1/p' "$header")"
  check_version "KIVFISHEYE_VERSION_MAJOR and its siblings" \
    "$(sed -n 's/^#define KIVFISHEYE_VERSION_[A-Z]* //p' "$header" | paste -sd.)"
  check_version "pkg-config's description" "$(pkg-config --modversion kivfisheye)"
  check_version "find_package's description" \
    "$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")$/\1/p' "$libdir/cmake/KivFisheye/KivFisheyeConfigVersion.cmake")"
  [[ $(/usr/bin/kivfisheye --version) == "kivfisheye $version" ]] ||
    fail "kivfisheye --version prints '$(/usr/bin/kivfisheye --version)'"
}

# check_client PROGRAM: it runs with the installed library.
check_client() {
  ldd "$1" | awk -v name="$soname" '$1 == name { print $3 }' | xargs -r realpath |
    grep -qxF "$libdir/libKivFisheye.so.$version" || fail "$1 does not run with the library in $libdir"
}

# Programs are built with nothing told about where the library is.
check_clients() {
  "$here/check-headers" g++ /usr/include/KivFisheye || fail "an installed header does not compile alone"
  "$here/check-pkg-config" g++ "" "$version" "$work/by-pkg-config" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "no program could be built with pkg-config, or it failed"
  }
  check_client "$work/by-pkg-config/outside"
  grep -qF "version $version:" "$work/log" || fail "a program by pkg-config was built with other headers"
  "$here/check-find-package" cmake g++ "" "$version" "$work/by-cmake" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "no program could be built with find_package, or it failed"
  }
  check_client "$work/by-cmake/outside"
  grep -qF "version $version:" "$work/log" || fail "a program by find_package was built with other headers"
  grep -qxF "KivFisheye_DIR:PATH=$libdir/cmake/KivFisheye" "$work/by-cmake/CMakeCache.txt" ||
    fail "find_package found another library"
}

# The tool draws a room and flattens it to a picture that is not of one colour.
check_tool() {
  local panorama=$work/panorama.png
  check_client /usr/bin/kivfisheye
  /usr/bin/kivfisheye scene "$work/room.png" --mount ceiling >"$work/log" 2>&1 &&
    /usr/bin/kivfisheye dewarp "$work/room.png" "$panorama" --mount ceiling --view full --size 1024x256 \
      >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "kivfisheye could not flatten a room"
  }
  [[ $(file -b "$panorama") == "PNG image data, 1024 x 256, "* ]] ||
    fail "the panorama is no picture of 1024x256: $(file -b "$panorama")"
  (($(stat -c %s "$panorama") > 20000)) || fail "the panorama of a room is so small that it shows nothing"
}
