# shellcheck shell=bash
# Debian packages: which are missing, and how they are installed. Needs common.sh.

native_packages=(g++ cmake ninja-build libsqlite3-dev nlohmann-json3-dev libcli11-dev libfmt-dev
  libocct-data-exchange-dev libtbb-dev)
# wmf2svg of libwmf-bin reads nothing without the fonts.
test_packages=(clang libclang-rt-14-dev clang-format googletest libgtest-dev libgmock-dev libbenchmark-dev
  libabsl-dev pkg-config doxygen admesh libwmf-bin fonts-urw-base35 python3 python3-ezdxf)
# Without it one test is skipped.
browser_packages=(chromium)
windows_packages=(g++ cmake ninja-build g++-mingw-w64-i686-posix nlohmann-json3-dev libcli11-dev libfmt-dev
  googletest libgtest-dev libgmock-dev pkg-config xvfb)
isolated_wine_packages=(mmdebstrap arch-test bubblewrap uidmap debian-archive-keyring)
sqlite_source_packages=(dpkg-dev tcl make gcc)

# Prints those of the named packages that are not installed. One dpkg-query answers in a few hundredths
# of a second, so no record of an earlier answer is kept that could go stale.
missing_packages() {
  local installed name
  installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null | sed -n 's/ installed$//p')
  for name in "$@"; do
    grep -qxF -- "$name" <<<"$installed" || printf '%s\n' "$name"
  done
}

# need_packages NAME...: installs what is missing. Returns 1, with the command for the user to give,
# where that cannot be done.
need_packages() {
  local missing become=()
  if ! have apt-get || ! have dpkg-query; then
    say "This machine has no apt-get: the equivalents of these packages must be there: $*"
    return 0
  fi
  mapfile -t missing < <(missing_packages "$@")
  [ "${#missing[@]}" -eq 0 ] && return 0

  if [ "$(id -u)" -ne 0 ]; then
    if have sudo && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
      become=(sudo)
    else
      say "These packages are missing: ${missing[*]}"
      say "Install them with this command (as root), then try again:"
      say "    apt-get update && apt-get install --no-install-recommends ${missing[*]}"
      return 1
    fi
  fi
  step "Installing ${missing[*]}"
  # An update that fails for one foreign source must not stop the install from the others.
  "${become[@]}" apt-get update -q >&2 || say "apt-get update reported a problem; trying to install all the same"
  "${become[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends -o DPkg::Lock::Timeout=300 "${missing[@]}" >&2 || {
    say "The packages could not be installed. The command was:"
    say "    apt-get install --no-install-recommends ${missing[*]}"
    return 1
  }
}

# The http(s) address of a Debian archive, as the machine's own sources name it. Until apt has read the
# archives it does not know whose they are; then the folder's usual name tells.
debian_mirror() {
  local found=
  if have apt-get; then
    found=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' 2>/dev/null |
      grep -E '^https?://' | grep -v security | head -n 1)
    [ -n "$found" ] || found=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 2>/dev/null |
      grep -E '^https?://[^ ]*/debian/?$' | head -n 1)
  fi
  if [ -z "$found" ]; then
    say "apt's sources name no Debian archive that is reached by http or https."
    return 1
  fi
  printf '%s\n' "$found"
}
