# shellcheck shell=bash
# SQLite for the Windows target, from Debian's source package (the version that the native target
# links): no binary package ships the one-file form. Needs common.sh and packages.sh.

sqlite_suite=bookworm
sqlite_flags=(-O2 -march=pentium4 -mfpmath=sse -mstackrealign -DSQLITE_THREADSAFE=1 -DSQLITE_DQS=0
  -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_DEFAULT_WAL_SYNCHRONOUS=2)

sqlite_source() {
  local keyring=/usr/share/keyrings/debian-archive-keyring.gpg signed='' mirror
  mirror=$(debian_mirror) || return 1
  [ -f "$keyring" ] && signed="[signed-by=$keyring] "
  mkdir -p lists/partial
  echo "deb-src $signed$mirror $sqlite_suite main" >source.list
  # The machine's own sources and lists stay as they are.
  local apt=(apt-get -q -o "Dir::Etc::SourceList=$PWD/source.list" -o Dir::Etc::SourceParts=/dev/null
    -o "Dir::State::Lists=$PWD/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
    -o APT::Sandbox::User=root)
  "${apt[@]}" update &&
    "${apt[@]}" source --download-only sqlite3 &&
    dpkg-source -x sqlite3_*.dsc source
}

sqlite_build() {
  cd "$1" && sqlite_source && mkdir build && cd build &&
    ../source/configure --disable-tcl &&
    make sqlite3.c &&
    i686-w64-mingw32-gcc-posix "${sqlite_flags[@]}" -c sqlite3.c -o sqlite3.o &&
    i686-w64-mingw32-ar rcs libsqlite3.a sqlite3.o
}

sqlite_make() {
  local target=$1 work status=0
  say "Compiling SQLite for the Windows target (about a minute)"
  work=$(mktemp -d)
  if (sqlite_build "$work") </dev/null >"$work/log" 2>&1; then
    cp "$work"/build/{sqlite3.h,libsqlite3.a} "$target/" || status=1
  else
    tail -n 30 "$work/log" >&2
    status=1
  fi
  rm -rf "$work"
  return "$status"
}

# Sets sqlite_folder; 1 when it has not been made.
sqlite_locate() {
  local recipe
  recipe=$(declare -f sqlite_source sqlite_build && echo "$sqlite_suite ${sqlite_flags[*]}")
  sqlite_folder=$cache/sqlite-windows-$(fingerprint <<<"$recipe")
  [ -d "$sqlite_folder" ]
}

sqlite_setup() {
  sqlite_locate && return 0
  need_packages "${sqlite_source_packages[@]}" && make_once "$sqlite_folder" sqlite_make
}
