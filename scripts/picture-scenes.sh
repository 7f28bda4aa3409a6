# shellcheck shell=bash disable=SC2034,SC2164
# Sourced by scripts/pictures: what is shown in the pictures of the full emulation. Each function is the program of a
# window; HOME is a fresh folder.

SCENES="vim htop graph mc boxes-10 boxes-14 boxes-20 scripts underlines find"
# Those in which something is selected as well.
SELECTED_SCENES="vim scripts underlines"

scene_vim() {
  mkdir -p "$HOME/tides" && cd "$HOME/tides"
  cat >tide.c <<'END'
#include <math.h>
#include <stdio.h>

/* The height of the tide in metres, `hours` after low water. */
double height(double hours) {
  const double period = 12.42; // lunar
  return 2.0 - 1.5 * cos(2 * M_PI * hours / period);
}

int main(void) {
  for (int hour = 0; hour <= 12; hour++) {
    printf("%02d:00  %4.1f m%s\n", hour, height(hour), height(hour) > 3.4 ? "  high" : "");
  }
  return 0; /* TODO: read the place from argv */
}
END
  exec vim -N -u NONE -i NONE -n -c 'syntax on' -c 'set termguicolors number cursorline hlsearch laststatus=2 ruler' \
    -c 'colorscheme desert' -c '/height' -c 'vsplit' tide.c
}

scene_htop() { exec htop; }

scene_mc() {
  mkdir -p "$HOME/tides/src" "$HOME/tides/docs"
  echo 'Tides' >"$HOME/tides/README"
  ln -s README "$HOME/tides/readme.link"
  cd "$HOME/tides"
  exec mc -u . /usr/share
}

# A project with two branches that were merged.
scene_graph() {
  export GIT_AUTHOR_NAME=Ada GIT_AUTHOR_EMAIL=ada@example.org GIT_COMMITTER_NAME=Ada GIT_COMMITTER_EMAIL=ada@example.org
  export GIT_AUTHOR_DATE='2026-11-01 12:00 +0000' GIT_COMMITTER_DATE='2026-11-01 12:00 +0000' GIT_CONFIG_NOSYSTEM=1
  mkdir -p "$HOME/graph" && cd "$HOME/graph"
  git -c init.defaultBranch=main init -q
  commit() { git commit -q --allow-empty -m "$1"; }
  commit 'The height of the tide at an hour'
  commit 'Tests for high and low water'
  git checkout -q -b harbours
  commit 'Harbours have names: Saint-Malo, Göteborg, 横浜'
  commit 'A table of harbours'
  git checkout -q main
  commit 'Hours are lunar'
  git checkout -q -b neap
  commit 'Neap tides'
  git checkout -q main
  git merge -q --no-ff -m 'Merge harbours' harbours
  git merge -q --no-ff -m 'Merge neap' neap
  git tag v1.0
  commit 'Release notes'
  git --no-pager log --graph --oneline --all --decorate --color=always
  git --no-pager log -3 --stat --color=always --format='%C(auto)%h %C(bold blue)%an%C(reset) %C(italic)%s%C(reset)'
  exec sleep 1000
}

scene_boxes() {
  cat <<'END'
┌──────┬──────┐  ┏━━━━━━┳━━━━━━┓  ╔══════╦══════╗  ╭──────╮  ┍━━┯━━┑
│ thin │      │  ┃ bold ┃      ┃  ║double║      ║  │ arcs │  │  ╎  ┊
├──────┼──────┤  ┣━━━━━━╋━━━━━━┫  ╠══════╬══════╣  ╰──────╯  ┝┅┅┿┉┉┥
│      │      │  ┃      ┃      ┃  ║      ║      ║  ╱╲  ╳╳    ╘══╧══╛
└──────┴──────┘  ┗━━━━━━┻━━━━━━┛  ╚══════╩══════╝  ╲╱  ╳╳    ╓──╥──╖
▁▂▃▄▅▆▇█  ▏▎▍▌▋▊▉█  ░░▒▒▓▓██  ▖▗▘▙▚▛▜▝▞▟  ▀▄▀▄▀▄  ▐▌▐▌▐▌
⠁⠃⠇⡇⣇⣧⣷⣿  ⣀⣤⣶⣿⣶⣤⣀  ⠋⠙⠹⠸⠼⠴⠦⠧⠇⠏  ■□▪▫▲▶▼◀◆◇○●◐◑
🬀🬁🬂🬃🬄🬅🬆🬇🬈🬉🬊🬋🬌🬍🬎🬏  🭀🭁🭂🭃🭄🭅🭆🭇  🬼🬽🬾🬿
END
  printf '\033(0lqqqwqqqk  \033(B DEC graphics: \033(0`afgjklmnopqrstuvwxyz{|}~\033(B\n\033(0mqqqvqqqj\033(B\n'
  printf '\033[44;97m ▀▀▄▄██ \033[0m\033[34m\xee\x82\xb0\033[0m  \033[7m reverse ░▒▓ \033[0m  \033[38;5;208m████\033[48;5;22m▓▓▒▒░░\033[0m\n'
  exec sleep 1000
}
scene_boxes-10() { scene_boxes; }
scene_boxes-14() { scene_boxes; }
scene_boxes-20() { scene_boxes; }

scene_scripts() {
  printf 'Latin      |naïve Ångström ệ e\u0301 o\u0302\u0323 ﬁ|\n'
  printf 'Greek      |Καλημέρα κόσμε|\nCyrillic   |Здравствуй, мир|\n'
  printf 'Chinese    |你好，世界|\nJapanese   |こんにちは 世界 ｶﾀｶﾅ が|\nKorean     |안녕하세요 \u1112\u1161\u11ab|\n'
  printf 'Arabic     |مرحبا بالعالم لا|\nHebrew     |שלום עולם|\n'
  printf 'Devanagari |नमस्ते दुनिया क्षि|\nThai       |สวัสดี น้ำ|\nTamil      |வணக்கம் கொ|\n'
  printf 'Emoji      |😀 👍🏽 👩‍💻 👨‍👩‍👧‍👦 🇫🇷🇯🇵 ❤️ ☺︎ ✈️ 1️⃣ 🏳️‍🌈|\n'
  printf 'Symbols    |→ ⇒ ∑ ∫ √ ≠ ≤ ∞ ⌘ ⏎ ✓ ✗ ★ ☃ © ™ € ½|\nMath       |𝐀 𝒜 𝔄 𝕏 𝚡|\n'
  printf 'Ruler      |%s|\n' 1234567890123456789012345678901234567890
  printf 'Bold       |\033[1m漢字 Жирный नमस्ते مرحبا\033[0m|\nItalic     |\033[3m漢字 Курсив नमस्ते مرحبا\033[0m|\n'
  printf 'Reverse    |\033[7m漢字 Выбор नमस्ते مرحبا 😀\033[0m|\n'
  exec sleep 1000
}

scene_underlines() {
  local style
  for style in '4|single gjpqy' '4:2|double gjpqy' '4:3|curly gjpqy' '4:4|dotted gjpqy' '4:5|dashed gjpqy' '53|overlined' \
    '9|struck' '4;9;53|all three' '1|bold' '2|faint' '3|italic' '1;3|bold italic' '7|reverse' '8|hidden' '5|blinking' '1;2|bold and faint'; do
    printf '%-8s \033[%sm%-18s\033[0m \033[4:3;58:2::255:64:64;%sm%-18s\033[0m \033[58:5:46;%s;44m%-18s\033[0m\n' \
      "${style%%|*}" "${style%%|*}" "${style#*|}" "${style%%|*}" "${style#*|}" "${style%%|*}" "${style#*|}"
  done
  printf '\033[4m漢字 under wide\033[0m \033[4:3mcurly ـتـ 漢字 to the end of a line\033[0m\n\033[21mSGR 21\033[24m off\n'
  for i in 0 1 2 3 4 5 6 7; do printf '\033[3%dm%d \033[9%dm%d \033[4%dm  \033[10%dm  \033[0m' $i $i $i $i $i $i; done
  printf '\n'
  for i in $(seq 0 4 255); do printf '\033[48;2;%d;%d;%dm ' "$i" $((255 - i)) 128; done
  printf '\033[0m\n\033]8;;https://example.org\033\\a link\033]8;;\033\\ and \033[38:2::255:128:0mRGB with colons\033[0m\n'
  exec sleep 1000
}

scene_find() {
  local i
  for i in $(seq 1 400); do
    printf '\033[90m12:%02d:%02d\033[0m \033[3%dm%-5s\033[0m GET /orders/%d \033[1mstatus=%d\033[0m %d ms 注文\n' $((i / 60)) $((i % 60)) \
      $((i % 3 + 2)) info $((i * 7919 % 5000)) "$([ $((i % 11)) = 0 ] && echo 502 || echo 200)" $((i * 13 % 90 + 3))
  done
  exec sleep 1000
}
