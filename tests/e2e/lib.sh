# Sourced by the end-to-end tests: waiting, comparing, finding windows.

# The fonts of the tests, if ctest has set them.
if [ -n "${ZOLT_TEST_FONT_FOLDER:-}" ]; then
  export FONTCONFIG_FILE="$ZOLT_TEST_FONT_FOLDER/${ZOLT_TEST_FONT:-DejaVu Sans Mono}.conf"
fi

# Waits until a command succeeds; fails with `what`, and what the program printed, after 60 s.
await() {
  local what=$1
  shift
  for _ in $(seq 600); do
    if "$@" >/dev/null 2>&1; then return; fi
    sleep 0.1
  done
  echo "timed out: $what"
  if [ -s "${home:-}/output" ]; then sed 's/^/printed: /' "$home/output"; fi
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

# Succeeds when the process shows a menu, which is a window without a title.
has_menu() {
  [ "$(xdotool search --onlyvisible --pid "$1" 2>/dev/null | wc -l)" -gt \
    "$(xdotool search --all --onlyvisible --pid "$1" --name . 2>/dev/null | wc -l)" ]
}
has_no_menu() { ! has_menu "$1"; }

# picture WINDOW [BYTES]: a checksum of the window's pixels; BYTES limits it to the last so many, counted from the bottom.
picture() { xwd -silent -id "$1" | tail -c "${2:-+200}" | cksum; }
differs() { [ "$(picture "${@:2}")" != "$1" ]; }
is_same() { [ "$(picture "${@:2}")" = "$1" ]; }

# Succeeds when the window's picture does not change for a while. That nothing changes can only be seen by waiting.
is_at_rest() {
  local first
  first=$(picture "$@")
  for _ in 1 2 3; do
    sleep 0.2
    is_same "$first" "$@" || return
  done
}
