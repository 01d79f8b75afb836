# shellcheck shell=bash
# Configuring and building a preset. Needs common.sh.

logs=$checkout/build/logs

# Shows what a command prints as one line that moves on (on a terminal) or a line now and then.
show_progress() {
  local line last=$SECONDS
  while IFS= read -r line; do
    if [ -t 2 ]; then
      printf '\r\033[K   %.100s' "$line" >&2
    elif [ $((SECONDS - last)) -ge 20 ]; then
      printf '   %.100s\n' "$line" >&2
      last=$SECONDS
    fi
  done
  [ ! -t 2 ] || printf '\r\033[K' >&2
}

# logged NAME COMMAND...: runs a command with its output in build/logs/NAME.log; shows the end of that
# when it fails.
logged() {
  local log=$logs/$1.log status
  shift
  "$@" </dev/null 2>&1 | tee "$log" | show_progress
  status=${PIPESTATUS[0]}
  if [ "$status" -ne 0 ]; then
    grep -m 1 -B 1 -A 20 -E '^(FAILED|CMake Error)' "$log" >&2 || tail -n 30 "$log" >&2
    say "   failed; all of it: ${log#"$checkout/"}"
  fi
  return "$status"
}

# configured PRESET TESTS: whether the build folder stands as the presets have it.
configured() {
  local folder=$checkout/build/$1
  [ -f "$folder/build.ninja" ] &&
    [ ! "$checkout/CMakePresets.json" -nt "$folder/build.ninja" ] &&
    [ ! "$checkout/cmake/toolchains/windows-i686.cmake" -nt "$folder/build.ninja" ] &&
    { [ "$2" = OFF ] || grep -q '^QUILLMAR_TESTS:BOOL=ON' "$folder/CMakeCache.txt"; }
}

# build_preset PRESET TESTS TARGET: TESTS (ON or OFF) says whether the tests are wanted; a folder that
# has them already keeps them. The benchmarks are tested with the native ones. Two builds of one checkout wait for each other.
build_preset() {
  local preset=$1 tests=$2 target=$3 launcher=() benches=OFF
  [ "$preset" != native ] || benches=$tests
  mkdir -p "$logs"
  (
    cd "$checkout" || exit 1
    flock -n 8 || {
      say "   waiting for another build of this checkout"
      flock 8
    }
    if ! configured "$preset" "$tests"; then
      have ccache && launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
      logged "$preset-configure" cmake --fresh --preset "$preset" "-DQUILLMAR_TESTS=$tests" \
        "-DQUILLMAR_BENCHES=$benches" "${launcher[@]}" 8>&- || exit 1
    fi
    logged "$preset-build" cmake --build --preset "$preset" --target "$target" 8>&-
  ) 8>"$checkout/build/.lock"
}
