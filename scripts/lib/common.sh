# shellcheck shell=bash
# Places, messages and the making of cached folders, shared by the scripts. Sourcing it runs nothing.

checkout=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
cache=${XDG_CACHE_HOME:-${HOME:-/var/tmp}/.cache}/quillmar

say() { printf '%s\n' "$*" >&2; }

step() { printf '\n== %s\n' "$*" >&2; }

die() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

have() { command -v "$1" >/dev/null 2>&1; }

# A short name for a text: caches are named by what made them, so a changed recipe gets a new folder.
fingerprint() { sha256sum | cut -c1-12; }

# make_once FOLDER MAKER [ARGS...]: calls `MAKER ARGS... TEMP` unless FOLDER is there. FOLDER appears
# whole or not at all; of several runs at the same time one makes it and the others wait for that.
make_once() {
  local folder=$1
  shift
  [ -d "$folder" ] && return 0
  mkdir -p "$(dirname "$folder")"
  (
    flock 9
    [ -d "$folder" ] && exit 0
    rm -rf "$folder".new.*
    temp=$(mktemp -d "$folder.new.XXXXXX") || exit 1
    # A daemon started by the maker must not inherit the lock.
    if "$@" "$temp" 9>&-; then
      chmod 755 "$temp" && mv -T "$temp" "$folder"
    else
      rm -rf "$temp"
      exit 1
    fi
  ) 9>"$folder.lock"
}
