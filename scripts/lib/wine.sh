# shellcheck shell=bash
# A 32-bit Wine and its prefixes. Needs common.sh and packages.sh.
#
# Two roads lead to a Wine that runs 32-bit programs. "host" is the one that the machine has. "isolated"
# is a small i386 Debian in the cache folder, entered with bubblewrap; it changes nothing on the machine.
# wine_setup chooses and prepares; wine_locate finds what was prepared, quickly enough for every test.

wine_root_suite=bookworm

# No .NET, no browser engine, no menu entries. Without a debugger a crash ends at once (status 5)
# instead of waiting for ever in winedbg.
wine_settings=(WINEARCH=win32 WINEDEBUG=-all "WINEDLLOVERRIDES=mscoree=;mshtml=;winemenubuilder.exe=d;winedbg.exe=d")

# Wine takes its system code page from the locale: Polish gives Windows-1250.
wine_locale=pl_PL.UTF-8

# --- what is kept in the cache ---------------------------------------------------------------------

wine_make_root() {
  local target=$1 mirror mode=auto log=$1.log
  mirror=$(debian_mirror) || return 1
  [ "$(id -u)" -eq 0 ] || mode=unshare
  say "Making an isolated 32-bit Wine from $mirror (about a minute, 800 MB in the cache folder)"
  # Extracted by us so that every file belongs to the user, and so can be removed again.
  if ! (
    set -o pipefail
    mmdebstrap --mode="$mode" --format=tar --architectures=i386 --variant=apt --include=wine32,wine,locales \
      --aptopt='APT::Install-Recommends "false"' \
      --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-exclude=/usr/share/man/*' \
      --dpkgopt='path-exclude=/usr/share/locale/*' \
      --customize-hook="chroot \"\$1\" localedef -i pl_PL -f UTF-8 $wine_locale" \
      --customize-hook="rm -rf \"\$1\"/var/cache/apt/* \"\$1\"/var/lib/apt/lists/*" \
      "$wine_root_suite" - "deb $mirror $wine_root_suite main" 2>"$log" |
      tar -C "$target" --no-same-owner --exclude=./dev -xf -
  ); then
    tail -n 20 "$log" >&2
    rm -f "$log"
    return 1
  fi
  rm -f "$log"
}

wine_make_locale() { localedef -i pl_PL -f UTF-8 "$1/$wine_locale" >&2; }

wine_make_prefix() {
  local target=$1 link
  say "Making the template of the Wine prefixes"
  wine_world "$target"
  # The server writes the registry files only when it ends in peace.
  timeout 300 "${world[@]}" sh -c '
    wine wineboot -i &&
      wine reg add "HKCU\\Software\\Wine\\Drivers" /v Graphics /d null /f
    result=$?
    wineserver -k
    wineserver -w
    exit $result' </dev/null >"$target.log" 2>&1 || {
    tail -n 20 "$target.log" >&2
    rm -f "$target.log"
    return 1
  }
  # The user's folders are links into the home folder of whoever ran wineboot: make them real.
  find "$target/drive_c/users" -type l -print0 | while IFS= read -r -d '' link; do
    rm "$link" && mkdir "$link"
  done
  rm -f "$target.log"
  wine_end "$target"
}

# The registry files of the template after the import of the .reg files of FOLDER.
wine_make_registry() {
  local folder=$1 target=$2 prefix status=0
  prefix=$(mktemp -d "$cache/run/registry.XXXXXX")
  wine_copy_template "$prefix"
  cp "$folder"/*.reg "$prefix/drive_c/"
  wine_world "$prefix"
  # shellcheck disable=SC2016
  timeout 120 "${world[@]}" sh -c '
    status=0
    cd "$1" && for file in *.reg; do
      wine reg import "C:\\$file" || status=1
    done
    wineserver -k
    wineserver -w
    exit $status' sh "$prefix/drive_c" </dev/null >"$target.log" 2>&1 || {
    say "A registry file in $folder cannot be imported:"
    cat "$target.log" >&2
    status=1
  }
  cp "$prefix"/{system,user,userdef}.reg "$target/"
  wine_end "$prefix"
  rm -rf "$prefix" "$target.log"
  return "$status"
}

# --- prefixes --------------------------------------------------------------------------------------

# Fills PREFIX, an empty folder in the cache, with a copy of the template. The copy shares its files with
# the template by hard links, but for those that Wine or a program writes in place.
wine_copy_template() {
  cp -al "$wine_template/." "$1/"
  cp --remove-destination "$wine_template"/{system,user,userdef}.reg "$1/"
  (cd "$wine_template" && find . -name '*.ini' -print0 | xargs -0 -r cp --remove-destination --parents -t "$1")
}

# Ends what still runs on PREFIX. In the isolated root all ended with the command, the server's folder too.
wine_end() {
  if [ "$wine_road" = host ] && [ -s "$1/wineserver" ]; then
    WINEPREFIX=$1 wineserver -k 2>/dev/null
    rm -rf "/tmp/$(cat "$1/wineserver")"
  fi
  rm -f "$1/wineserver"
}

# wine_world PREFIX [PATH...]: sets `world` to the command words before which `wine ...` runs on PREFIX.
# In the isolated root only the named folders of the machine exist, at their own paths.
wine_world() {
  local prefix=$1 path part
  local settings=("${wine_settings[@]}" "WINEPREFIX=$prefix" "LC_ALL=$wine_locale" "${wine_extra_settings[@]}")
  shift
  if [ "$wine_road" = host ]; then
    world=(env -u WAYLAND_DISPLAY -u DISPLAY "LOCPATH=$wine_locales" "HOME=$prefix" "${settings[@]}")
    return
  fi
  world=(bwrap --die-with-parent --unshare-pid --dev /dev --proc /proc --tmpfs /tmp --tmpfs /run)
  [ "$(id -u)" -eq 0 ] || world+=(--unshare-user)
  for part in usr etc var bin sbin lib lib32 libx32 lib64; do
    if [ -L "$wine_root/$part" ]; then
      world+=(--symlink "$(readlink "$wine_root/$part")" "/$part")
    elif [ -d "$wine_root/$part" ]; then
      world+=(--ro-bind "$wine_root/$part" "/$part")
    fi
  done
  for path in "$prefix" "$@"; do
    case $path in
      / | /usr | /etc | /var | /bin | /sbin | /lib | /dev | /proc | /run) ;;
      *) world+=(--bind "$path" "$path") ;;
    esac
  done
  world+=(env -u DISPLAY -u WAYLAND_DISPLAY "HOME=$prefix" PATH=/usr/bin:/bin "${settings[@]}")
}

# --- choosing the road -----------------------------------------------------------------------------

wine_places() {
  local root_key prefix_key
  wine_extra_settings=()
  root_key=$( (declare -f wine_make_root; echo "$wine_root_suite") | fingerprint)
  prefix_key=$( (declare -f wine_make_prefix; echo "$root_key ${wine_settings[*]}") | fingerprint)
  wine_root=$cache/wine-root-$root_key
  wine_host_template=$cache/wine-host-prefix-$prefix_key
  wine_isolated_template=$cache/wine-prefix-$prefix_key
  wine_locales=$cache/wine-locales
  mkdir -p "$cache/run"
}

wine_take_road() {
  wine_road=$1
  if [ "$1" = host ]; then wine_template=$wine_host_template; else wine_template=$wine_isolated_template; fi
}

# Finds what wine_setup prepared; 1 when there is nothing.
wine_locate() {
  wine_places
  if [ -d "$wine_host_template" ] && have wine; then
    wine_take_road host
  elif [ -d "$wine_isolated_template" ] && have bwrap; then
    wine_take_road isolated
  else
    return 1
  fi
}

# Builds a program of one line for the target and runs it on a copy of the template.
wine_answers() {
  local folder status
  folder=$(mktemp -d "$cache/run/probe.XXXXXX")
  mkdir "$folder/prefix"
  printf '#include <windows.h>\nint main(void) { return GetACP() == 1250 ? 42 : 1; }\n' >"$folder/probe.c"
  if i686-w64-mingw32-gcc-posix -o "$folder/probe.exe" "$folder/probe.c"; then
    wine_copy_template "$folder/prefix"
    wine_world "$folder/prefix" "$folder"
    timeout 60 "${world[@]}" wine "$folder/probe.exe" </dev/null >"$folder/log" 2>&1
    status=$?
    wine_end "$folder/prefix"
    [ "$status" -eq 42 ] || cat "$folder/log" >&2
  fi
  rm -rf "$folder"
  [ "${status:-1}" -eq 42 ]
}

wine_setup_host() {
  have wine || return 1
  wine_take_road host
  if ! [ -d "$wine_locales" ]; then
    have localedef && make_once "$wine_locales" wine_make_locale 2>/dev/null || return 1
  fi
  make_once "$wine_template" wine_make_prefix 2>/dev/null && wine_answers 2>/dev/null
}

wine_setup_isolated() {
  need_packages "${isolated_wine_packages[@]}" || return 1
  wine_take_road isolated
  make_once "$wine_root" wine_make_root || {
    say "The isolated 32-bit root could not be made."
    return 1
  }
  if ! make_once "$wine_template" wine_make_prefix; then
    say "Wine does not start in its isolated root (inside a container without user namespaces it cannot)."
    return 1
  fi
  wine_answers || {
    say "Wine in its isolated root does not run a 32-bit program (the kernel must allow them)."
    return 1
  }
}

# Removes what killed runs left behind, and what no recipe has asked for in a month.
wine_tidy() {
  touch "$wine_template"
  [ "$wine_road" = host ] || touch "$wine_root"
  find "$cache/run" -mindepth 1 -maxdepth 1 -mmin +1440 -exec rm -rf {} +
  find "$cache" -mindepth 1 -maxdepth 1 -name 'wine-*' -mtime +30 -exec rm -rf {} +
}

# Prepares a road; 1, with the reason on standard error, when there is none.
wine_setup() {
  wine_locate && return 0
  step "Preparing a 32-bit Wine"
  if wine_setup_host; then
    say "Using the machine's own Wine."
    return 0
  fi
  rm -rf "$wine_host_template"
  wine_setup_isolated
}
