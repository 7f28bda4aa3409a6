# Zolt's shell integration for bash 3.2 and later: marks prompts, commands and their output (OSC 133) and reports the
# working directory (OSC 7).
#
# Zolt starts bash in POSIX mode with ENV naming this file, which is then the only file that bash reads. It takes both back
# and reads what bash would have read. Where that part is over, nothing of the user's shell differs but PROMPT_COMMAND,
# PS0, PS1 and names that start with __zolt_.

if [ -n "${ZOLT_ENV+set}" ]; then
  export ENV="$ZOLT_ENV"
else
  unset ENV
fi
unset ZOLT_ENV
[ -n "${BASH_VERSION-}" ] || return 0

# What POSIX mode has changed by now. Ending the mode restores the rest.
set +o posix
shopt -u inherit_errexit 2>/dev/null
case $(declare -p HISTFILE 2>/dev/null) in
  "declare -- HISTFILE="*) [ "$HISTFILE" != ~/.sh_history ] || HISTFILE=~/.bash_history ;;
esac
case $(declare -p MAILCHECK 2>/dev/null) in
  'declare -i MAILCHECK="600"' | 'declare -- MAILCHECK="600"') MAILCHECK=60 ;;
esac

# The functions are defined before the user's files can define aliases for the words in them. Each works under any option
# that the user may set, errexit and nounset included, and its trace (xtrace) goes nowhere.

# Sets __zolt_encoded to a text with all but the unreserved characters of RFC 3986 and '/' percent-encoded.
__zolt_encode() {
  local LC_ALL=C text=$1 each code i
  __zolt_encoded=
  for ((i = 0; i < ${#text}; ++i)); do
    each=${text:i:1}
    case $each in
      [a-zA-Z0-9/._~-]) ;;
      *)
        builtin printf -v code %d "'$each"
        builtin printf -v each %%%02X $((code & 255))
        ;;
    esac
    __zolt_encoded=$__zolt_encoded$each
  done
  return 0
}

# Prints the command line as C's option, if it went into the history: what the user keeps out of it stays unknown.
__zolt_command_line() {
  local line
  [[ ${HISTCMD-} != "$__zolt_history_number" ]] || return 0
  line=$(HISTTIMEFORMAT= builtin history 1)
  # A number, a blank or an asterisk, and a blank stand before it.
  line=${line#"${line%%[0-9]*}"}
  line=${line#"${line%%[!0-9]*}"}
  line=${line:2}
  ((${#line} > 0 && ${#line} <= 2000)) || return 0
  __zolt_encode "$line"
  builtin printf ';cmdline_url=%s' "$__zolt_encoded"
}

# Sets __zolt_ran if a command has been run since the last call.
__zolt_notice_command() {
  local now='\#'
  if ((__zolt_level >= 404)); then
    now=${now@P}
  else
    now=$(HISTTIMEFORMAT= builtin history 1)
  fi
  __zolt_ran=
  [[ $now == "${__zolt_before-$now}" ]] || __zolt_ran=yes
  __zolt_before=$now
}

# Puts the marks around the prompt and before the output, whoever has set PS1 and PS0 since the last call, and reports a
# command's status. A prompt that the user marks stays as it is, and so does what goes with it.
__zolt_mark() {
  local start='\[\e]133;A;k=i\a\]' end='\[\e]133;B\a\]' finish='\[\e]133;D;$?\a\]'
  local output='\e]133;C\a' output_of='\e]133;C$(__zolt_command_line 2>/dev/null)\a'
  local prompt=${PS1-} before=${PS0-}
  before=${before//"$output_of"/}
  if [[ $prompt == *"$start"* ]]; then
    prompt=${prompt//"$finish"/}
    prompt=${prompt//"$start"/}
    prompt=${prompt//"$end"/}
    before=${before//"$output"/}
  fi
  if [[ $prompt != *'133;A'* ]]; then
    # After other commands in the same string $? is theirs; the prompt still knows the right one.
    if [[ -n $__zolt_ran && -n $__zolt_is_alone ]]; then
      builtin printf '\033]133;D;%s\a' "$1" >&3
    elif [[ -n $__zolt_ran ]] && builtin shopt -q promptvars; then
      start=$finish$start
    fi
    prompt=$start$prompt$end
    if ((__zolt_level < 404)) || [[ $before == *'133;C'* ]]; then
      :
    elif ((__zolt_level >= 501)) && builtin shopt -q promptvars && [[ $options != *T* ]]; then
      __zolt_history_number=${HISTCMD-}
      before=$before$output_of
    else
      before=$before$output
    fi
  fi
  [[ $prompt == "${PS1-}" ]] || PS1=$prompt
  [[ $before == "${PS0-}" ]] || PS0=$before
}

__zolt_report_folder() {
  [[ ${PWD-} == /* ]] || return 0
  if [[ $PWD != "${__zolt_folder-}" ]]; then
    __zolt_encode "${HOSTNAME-}"
    __zolt_folder_url=file://$__zolt_encoded
    __zolt_encode "$PWD"
    __zolt_folder_url=$__zolt_folder_url$__zolt_encoded
    __zolt_folder=$PWD
  fi
  builtin printf '\033]7;%s\a' "$__zolt_folder_url" >&3
}

# Sets __zolt_last to the last element of PROMPT_COMMAND, or to the one before it if that is bash-preexec's, which has to be
# the last; and __zolt_is_alone if the hook is an element of its own.
__zolt_look_at_commands() {
  local -a places
  local place
  __zolt_last= __zolt_keeper= __zolt_is_alone=
  places=("${!PROMPT_COMMAND[@]}")
  ((${#places[@]} > 0)) || return 0
  place=${places[${#places[@]} - 1]}
  if [[ ${PROMPT_COMMAND[place]} == __bp_interactive_mode ]] && ((${#places[@]} > 1)); then
    __zolt_keeper=$place
    place=${places[${#places[@]} - 2]}
  fi
  __zolt_last=${PROMPT_COMMAND[place]}
  for place in "${places[@]}"; do
    [[ ${PROMPT_COMMAND[place]} != '"${__zolt_hook-:}"' ]] || __zolt_is_alone=yes
  done
}

# Keeps the hook the last command. As an element of an array (bash 5.1) it disturbs neither $?, $_ nor PIPESTATUS for the
# others, and stays when the user assigns to PROMPT_COMMAND. A variable that is exported stays a string, or children would
# miss it; in them the hook does nothing.
__zolt_stay_last() {
  local hook='"${__zolt_hook-:}"' line=$'\n' place commands
  case $__zolt_last in "$hook" | *"$line$hook" | *"$line$hook$line"__bp_interactive_mode) return 0 ;; esac
  for place in "${!PROMPT_COMMAND[@]}"; do
    commands=${PROMPT_COMMAND[place]}
    [[ $commands == *"$hook"* ]] || continue
    commands=${commands//"$line$hook"/}
    commands=${commands//"$hook"/:}
    if ((place == 0)); then
      PROMPT_COMMAND=$commands
    elif [[ $commands == : ]]; then
      builtin unset "PROMPT_COMMAND[$place]"
    else
      PROMPT_COMMAND[place]=$commands
    fi
  done
  if ((__zolt_level < 501)) || [[ $(builtin declare -p PROMPT_COMMAND) == "declare -"*x*" PROMPT_COMMAND="* ]]; then
    PROMPT_COMMAND=${PROMPT_COMMAND:+$PROMPT_COMMAND$line}$hook
  elif [[ -z ${PROMPT_COMMAND[*]-} ]]; then
    PROMPT_COMMAND[1]=$hook  # the first element, which is $PROMPT_COMMAND, stays as it is
  elif [[ -n $__zolt_keeper ]]; then
    PROMPT_COMMAND[__zolt_keeper]=$hook
    PROMPT_COMMAND+=(__bp_interactive_mode)
  else
    PROMPT_COMMAND+=("$hook")
  fi
  return 0
}

# Runs a function without the options that would show it elsewhere: allexport, functrace. Returns 0, or errexit would end
# the shell.
__zolt_run() {
  local options=$- IFS=$' \t\n'
  set +aT
  "$@"
  [[ $options != *a* ]] || set -a
  [[ $options != *T* ]] || set -T
  return 0
}

__zolt_at_prompt() {
  __zolt_look_at_commands
  __zolt_notice_command
  __zolt_mark "$1"
  __zolt_report_folder
  __zolt_stay_last
}

__zolt_prompt() {
  __zolt_run __zolt_at_prompt $?
} 3>&2 2>/dev/null

__zolt_at_start() {
  __zolt_level=$((BASH_VERSINFO[0] * 100 + BASH_VERSINFO[1]))
  __zolt_hook=__zolt_prompt
  __zolt_look_at_commands
  __zolt_notice_command
  __zolt_stay_last
}

__zolt_start() {
  __zolt_run __zolt_at_start
  unset -f __zolt_at_start __zolt_start
} 2>/dev/null

# The user's files, as "INVOCATION" in bash's manual has them. The systems whose bash reads one for all users' interactive
# shells put its name into the program.
if shopt -q login_shell; then
  [ ! -e /etc/profile ] || . /etc/profile
  if [ -e ~/.bash_profile ]; then
    . ~/.bash_profile
  elif [ -e ~/.bash_login ]; then
    . ~/.bash_login
  elif [ -e ~/.profile ]; then
    . ~/.profile
  fi
else
  if [ -e /etc/bash.bashrc ] && command grep -qF /etc/bash.bashrc "$BASH" 2>/dev/null; then
    . /etc/bash.bashrc
  elif [ -e /etc/bash/bashrc ] && command grep -qF /etc/bash/bashrc "$BASH" 2>/dev/null; then
    . /etc/bash/bashrc
  fi
  [ ! -e ~/.bashrc ] || . ~/.bashrc
fi

__zolt_start
