# Sourced by the end-to-end tests: waiting, comparing, finding windows.

# The fonts of the tests, where ctest says which those are.
if [ -n "${ZOLT_TEST_FONT_FOLDER:-}" ]; then
  export FONTCONFIG_FILE="$ZOLT_TEST_FONT_FOLDER/${ZOLT_TEST_FONT:-DejaVu Sans Mono}.conf"
fi

# Waits until a command succeeds; fails with `what` after 20 s.
await() {
  local what=$1
  shift
  for _ in $(seq 200); do
    if "$@" >/dev/null 2>&1; then return; fi
    sleep 0.1
  done
  echo "timed out: $what"
  exit 1
}

expect() {
  if [ "$2" != "$3" ]; then
    printf '%s:\n  expected: %q\n  found:    %q\n' "$1" "$2" "$3"
    exit 1
  fi
}

# The windows on screen with exactly this title, one a line, in the order of their making.
windows_titled() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | sort -n; }

# Succeeds when so many windows have this title.
has_windows() { [ "$(windows_titled "$1" | wc -l)" = "$2" ]; }
