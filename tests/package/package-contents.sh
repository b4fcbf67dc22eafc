# What the Debian packages hold and say of themselves, for check-packages.

public_headers=(
  DownwardFisheyeAlgo DownwardFisheyeOpenGLAlgo FrontwardFisheyeAlgo FrontwardFisheyeOpenGLAlgo KivFisheye
  KivFisheyeCommon KivFisheyeExport KivFisheyeLib KivFisheyeTypes KivFisheyeVersion math3d UpwardFisheyeAlgo
  UpwardFisheyeOpenGLAlgo
)
commands=(aim dewarp help info mesh outline scene sheet snapshot sweep)

# The files of a package, without folders: kind and rights, the path, and where links lead.
expected_files() {
  local data=-rw-r--r--
  printf -- "$data /usr/share/doc/$1/%s\n" changelog.gz copyright
  case "$1" in
    "$library_package")
      echo "lrwxrwxrwx $libdir/$soname -> libKivFisheye.so.$version"
      echo "$data $libdir/libKivFisheye.so.$version"
      ;;
    libkivfisheye-dev)
      printf -- "$data /usr/include/KivFisheye/%s.h\n" "${public_headers[@]}"
      printf -- "$data $libdir/cmake/KivFisheye/KivFisheye%s.cmake\n" \
        Config ConfigVersion Targets Targets-release
      echo "lrwxrwxrwx $libdir/libKivFisheye.so -> $soname"
      echo "$data $libdir/pkgconfig/kivfisheye.pc"
      ;;
    kivfisheye-tools)
      echo "-rwxr-xr-x /usr/bin/kivfisheye"
      printf -- "$data /usr/share/man/man1/kivfisheye%s.1.gz\n" "" "${commands[@]/#/-}"
      echo "$data /usr/share/bash-completion/completions/kivfisheye"
      ;;
  esac
}

# All that a package holds, as expected_files prints it, with the owner behind the rights.
contents() { dpkg-deb -c "$(file_of "$1")" | awk '{ $3 = $4 = $5 = ""; sub(/ +\./, " "); print }'; }

check_files() {
  contents "$1" >"$work/contents"
  ! grep -v -E '^[^ ]+ root/root ' "$work/contents" || fail "$1: not all of it belongs to root"
  ! grep '^d' "$work/contents" | grep -v '^drwxr-xr-x ' || fail "$1: folders have other rights"
  diff <(expected_files "$1" | sort) <(sed -n '/^d/!s| root/root /| /|p' "$work/contents" | sort) >&2 ||
    fail "$1: these files are missing (<) or of no use (>)"
}

# check_field PACKAGE FIELD VALUE
check_field() {
  local value
  value=$(dpkg-deb -f "$(file_of "$1")" "$2")
  [[ $value == "$3" ]] || fail "$1: $2 is '$value', not '$3'"
}

# Without the numbers of the distribution's own libraries, which compilers and systems decide.
dependencies() {
  dpkg-deb -f "$(file_of "$1")" Depends | sed 's/, /\n/g' |
    sed -E '/^libkivfisheye/!{s/ \(>= [0-9][^)]*\)$//;s/^(lib(av|sw)[a-z]+)[0-9]+$/\1/}' | sort | paste -sd,
}

check_fields() {
  local section depends description
  case "$1" in
    "$library_package") section=libs depends=libc6,libgcc-s1,libstdc++6 ;;
    libkivfisheye-dev) section=libdevel depends="$library_package (= $version)" ;;
    kivfisheye-tools)
      section=graphics
      depends="libavcodec,libavformat,libavutil,libc6,libgcc-s1,$library_package (>= $version)"
      depends+=,libstdc++6,libswscale
      ;;
  esac
  check_field "$1" Package "$1"
  check_field "$1" Source libkivfisheye
  check_field "$1" Version "$version"
  check_field "$1" Architecture "$architecture"
  check_field "$1" Section "$section"
  check_field "$1" Priority optional
  check_field "$1" Maintainer "The libKivFisheye developers"
  [[ $(dependencies "$1") == "$depends" ]] || fail "$1: depends on $(dependencies "$1"), not on $depends"
  description=$(dpkg-deb -f "$(file_of "$1")" Description)
  [[ ${description%%$'\n'*} =~ ^.{10,59}$ ]] || fail "$1: its summary should be one line of less than 60"
  [[ $description == *$'\n'* ]] || fail "$1: its description is a summary alone"
}

# Beside its fields and sums a package has control files, and no script that runs as root.
check_scripts() {
  local members expected=control,md5sums
  [[ $1 != "$library_package" ]] || expected=control,md5sums,shlibs,triggers
  members=$(dpkg-deb --ctrl-tarfile "$(file_of "$1")" | tar -t | sed -n 's|^\./\(..*\)|\1|p' | sort | paste -sd,)
  [[ $members == "$expected" ]] || fail "$1: its control files are $members, not $expected"
  [[ $1 == "$library_package" ]] || return 0
  [[ $(dpkg-deb -I "$(file_of "$1")" shlibs) == "libKivFisheye $major $1 (>= $version)" ]] ||
    fail "$1: its shlibs file does not name $soname"
  [[ $(dpkg-deb -I "$(file_of "$1")" triggers) == "activate-noawait ldconfig" ]] ||
    fail "$1: its trigger does not lead to ldconfig"
}

# Every path in the packages that the system does not have without them.
listed_paths() {
  local package
  for package in "${packages[@]}"; do
    contents "$package" | sed 's|^[^ ]* root/root /|/|;s| -> .*||;s|/$||'
  done | sort -u | while read -r path; do
    [[ -d $path && ! -L $path ]] || echo "$path"
  done
}
