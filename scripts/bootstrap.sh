# Sourced by ./run, ./test and ./bench: installs packages, builds, provides a virtual display.

ZOLT_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }

processors() { getconf _NPROCESSORS_ONLN 2>/dev/null || echo 2; }

# What each purpose needs, by package manager.
packages_for() {
  case "$1-$2" in
    apt-build)
      echo g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-svg-dev libutf8proc-dev libhwy-dev \
        libre2-dev nlohmann-json3-dev libsodium-dev libzstd-dev libxcb1-dev libxcb-xkb-dev libfontconfig-dev \
        fonts-dejavu-core libgtest-dev ;;
    apt-wayland) echo qt6-wayland ;;
    apt-display) echo xvfb ;;
    apt-test)
      echo bash zsh fish xdotool xclip x11-apps x11-utils procps dbus at-spi2-core python3-gi gir1.2-atspi-2.0 python3 \
        vim less htop tmux unicode-data fonts-liberation fonts-noto-mono ;;
    apt-bench) echo procps libxcb1-dev libxcb-xtest0-dev ;;
    apt-pictures) echo imagemagick xdotool dbus ;;
    apt-scenes) echo vim htop mc git xterm fonts-noto-cjk fonts-noto-color-emoji fonts-noto-core ;;
    dnf-build)
      echo gcc-c++ cmake ninja-build ccache pkgconf-pkg-config qt6-qtbase-devel qt6-qtsvg-devel utf8proc-devel \
        highway-devel re2-devel json-devel libsodium-devel libzstd-devel libxcb-devel fontconfig-devel dejavu-sans-mono-fonts gtest-devel ;;
    dnf-wayland) echo qt6-qtwayland ;;
    dnf-display) echo xorg-x11-server-Xvfb ;;
    dnf-test) echo bash zsh fish xdotool xclip xwd xprop procps-ng dbus-daemon at-spi2-core python3-gobject \
        vim-enhanced less htop tmux unicode-ucd liberation-mono-fonts google-noto-sans-mono-fonts ;;
    dnf-bench) echo procps-ng libxcb-devel ;;
    dnf-pictures) echo ImageMagick xdotool dbus-daemon ;;
    dnf-scenes) echo vim-enhanced htop mc git xterm google-noto-sans-cjk-fonts google-noto-emoji-color-fonts \
        google-noto-sans-fonts ;;
    pacman-build)
      echo gcc cmake ninja ccache pkgconf qt6-base qt6-svg libutf8proc highway re2 nlohmann-json libsodium zstd libxcb fontconfig \
        ttf-dejavu gtest ;;
    pacman-wayland) echo qt6-wayland ;;
    pacman-display) echo xorg-server-xvfb ;;
    pacman-test) echo bash zsh fish xdotool xclip xorg-xwd xorg-xprop procps-ng dbus at-spi2-core python-gobject \
        vim less htop tmux unicode-character-database ttf-liberation noto-fonts ;;
    pacman-bench) echo procps-ng libxcb ;;
    pacman-pictures) echo imagemagick xdotool dbus ;;
    pacman-scenes) echo vim htop mc git xterm noto-fonts noto-fonts-cjk noto-fonts-emoji ;;
    brew-build) echo cmake ninja ccache pkg-config qt utf8proc highway re2 nlohmann-json libsodium zstd googletest ;;
    brew-test) echo bash zsh fish vim less htop tmux ;;
  esac
}

package_manager() {
  local manager
  for manager in apt-get dnf pacman brew; do
    if command -v "$manager" >/dev/null 2>&1; then
      echo "${manager%-get}"
      return
    fi
  done
}

is_installed() {
  case "$1" in
    apt) dpkg-query -W -f '${Status}' "$2" 2>/dev/null | grep -q '^install ok installed' ;;
    dnf) rpm -q "$2" >/dev/null 2>&1 ;;
    pacman) pacman -Qq "$2" >/dev/null 2>&1 ;;
    brew) brew list --versions "$2" >/dev/null 2>&1 ;;
  esac
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null 2>&1; then
    sudo "$@"
  else
    say "Neither root nor sudo here. Have this run as root, then call again:  $*"
    return 1
  fi
}

install_packages() {
  local manager=$1
  shift
  case $manager in
    apt)
      as_root apt-get update -q
      as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "$@"
      ;;
    dnf) as_root dnf install -y "$@" ;;
    pacman) as_root pacman -Syu --needed --noconfirm "$@" ;;
    brew) brew install "$@" ;;
  esac
}

# need_packages PURPOSE...: installs what is missing for these purposes (build, display, test...), and says so.
need_packages() {
  local manager missing=() purpose package
  manager=$(package_manager)
  if [ -z "$manager" ]; then
    say "No package manager that this script knows (apt, dnf, pacman, brew): install by hand what CMake asks for."
    return
  fi
  for purpose in "$@"; do
    for package in $(packages_for "$manager" "$purpose"); do
      is_installed "$manager" "$package" || missing+=("$package")
    done
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing with $manager: ${missing[*]}"
  install_packages "$manager" "${missing[@]}" >&2
}

# build_preset PRESET [TARGET...]: configures and builds, everything without targets; quiet unless something goes wrong.
build_preset() {
  local preset=$1 log=$ZOLT_ROOT/build/$1.log
  shift
  mkdir -p "$ZOLT_ROOT/build"
  say "Building the $preset preset (log: build/$preset.log)"
  if ! (cd "$ZOLT_ROOT" && cmake --preset "$preset" &&
    cmake --build --preset "$preset" -j "$(processors)" ${1:+--target "$@"}) >"$log" 2>&1; then
    grep -E 'error|Error|FAILED' "$log" | head -n 40 >&2 || true
    tail -n 20 "$log" >&2
    return 1
  fi
}

# with_virtual_display COMMAND...: runs it on an X server of its own (VIRTUAL_SCREEN names its size), which is gone afterwards; the command's status.
# The server does not start over when its last client leaves: the next one would be refused meanwhile.
with_virtual_display() {
  local chosen server status=0
  if ! command -v Xvfb >/dev/null 2>&1; then
    say "Xvfb is missing: there is no virtual display on this machine."
    return 1
  fi
  chosen=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${VIRTUAL_SCREEN:-1280x1024}x24" -nolisten tcp -noreset 3>"$chosen" >/dev/null 2>&1 &
  server=$!
  trap 'kill "$server" 2>/dev/null; rm -f "$chosen"; exit 130' INT TERM
  for _ in $(seq 200); do
    [ -s "$chosen" ] && break
    sleep 0.05
  done
  if [ ! -s "$chosen" ]; then
    say "The virtual display did not start."
    kill "$server" 2>/dev/null || true
    return 1
  fi
  DISPLAY=":$(cat "$chosen")" "$@" || status=$?
  kill "$server" 2>/dev/null || true
  wait "$server" 2>/dev/null || true
  rm -f "$chosen"
  trap - INT TERM
  return "$status"
}
