# Zolt's shell integration for zsh: marks prompts, commands and their output (OSC 133) and reports the working directory
# (OSC 7).
#
# Zolt starts zsh with ZDOTDIR naming the folder of this file, in which it is called .zshenv. It puts the variable back, so
# that zsh finds the user's other files itself, and reads the user's .zshenv.

if (( ${+ZOLT_ZDOTDIR} )); then
  export ZDOTDIR="$ZOLT_ZDOTDIR"
else
  unset ZDOTDIR
fi
unset ZOLT_ZDOTDIR

# The functions are defined before the user's files can define aliases for the words in them. Each works under any option
# that the user may set and leaves no trace (xtrace) but of its beginning.

# Sets REPLY to a text with all but the unreserved characters of RFC 3986 and '/' percent-encoded.
__zolt_encode() {
  emulate -L zsh
  setopt extended_glob no_multibyte
  local MATCH MBEGIN MEND
  typeset -g REPLY="${1//(#m)[^a-zA-Z0-9\/._~-]/%${(l:2::0:)$(([##16]#MATCH & 255))}}"
}

# Writes to the terminal, wherever standard output goes.
__zolt_write() {
  builtin print -rn -- "$1" > "$TTY"
}

__zolt_preexec() {
  emulate -L zsh
  unsetopt xtrace
  local REPLY line=${1:-$3}
  typeset -g __zolt_ran=yes
  if (( $#line <= 2000 )); then
    __zolt_encode "$line"
    __zolt_write $'\e]133;C;cmdline_url='"$REPLY"$'\a'
  else
    __zolt_write $'\e]133;C\a'
  fi
} 2>/dev/null

# Puts the marks around the prompt, whoever has set PS1 since the last call, and reports a command's status. A prompt that
# the user marks stays as it is.
__zolt_mark() {
  local start=$'%{\e]133;A;k=i\a%}' end=$'%{\e]133;B\a%}' text=$PS1 percents
  if [[ $text == *"$start"* ]]; then
    text=${text//$start/}
    text=${text//$end/}
  fi
  if [[ $text != *'133;A'* ]]; then
    [[ -z $__zolt_ran ]] || __zolt_write $'\e]133;D;'$1$'\a'
    if [[ $2 == on ]]; then
      # A single % at the end shows nothing, but would take the mark's %.
      percents=${text##*[^%]}
      (( $#percents % 2 )) && text=${text%?}
      text=$start$text$end
    else
      __zolt_write $'\e]133;A\a'
    fi
  fi
  [[ $text == "$PS1" ]] || PS1=$text
}

__zolt_report_folder() {
  local REPLY host
  [[ $PWD == /* ]] || return 0
  __zolt_encode "$HOST"
  host=$REPLY
  __zolt_encode "$PWD"
  __zolt_write $'\e]7;file://'$host$REPLY$'\a'
}

__zolt_precmd() {
  local result=$? percent=
  [[ ! -o prompt_percent ]] || percent=on
  emulate -L zsh
  unsetopt xtrace
  __zolt_mark $result $percent
  __zolt_report_folder
  typeset -g __zolt_ran=
  [[ $precmd_functions[-1] == __zolt_precmd ]] || precmd_functions=(${precmd_functions:#__zolt_precmd} __zolt_precmd)
} 2>/dev/null

# At the first prompt: the user's files have been read, and the hooks can come last. A function called precmd runs before zsh
# looks at precmd_functions; if the user has one, the array has this function, too.
__zolt_start() {
  emulate -L zsh
  unsetopt xtrace
  [[ ${functions[precmd]-} != $'\t__zolt_start early' ]] || unfunction precmd
  (( ! $precmd_functions[(Ie)__zolt_precmd] )) || return 0
  precmd_functions=(${precmd_functions:#__zolt_start} __zolt_precmd)
  preexec_functions+=(__zolt_preexec)
  [[ $1 == early ]] || __zolt_precmd
} 2>/dev/null

if [[ -o interactive ]]; then
  (( ${+functions[precmd]} )) || precmd() { __zolt_start early }
  precmd_functions+=(__zolt_start)
fi

if [[ -r ${ZDOTDIR-$HOME}/.zshenv ]]; then
  builtin source "${ZDOTDIR-$HOME}/.zshenv"
fi
