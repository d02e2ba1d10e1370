# SPDX-License-Identifier: MIT
#
# Completion of cntr in bash: commands, options, the names that options take, and files. All names
# are those that the program's own help lists.

# The help of a command without its examples.
_cntr_help() {
  "${COMP_WORDS[0]}" "$@" --help 2>/dev/null | sed '/^Examples:/,$d'
}

_cntr_commands() {
  _cntr_help | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p'
}

_cntr_options() {
  _cntr_help "$1" | sed -n 's/^ \+\(-[a-z],\)\?\(--[a-z-]\+\).*/\2/p'
}

# The names that an option takes: those in braces, or the columns.
_cntr_values() {
  case $2 in
    --columns | --sort) _cntr_help "$1" | sed -n '/^Columns/,/^$/s/^  [* ] \([a-z0-9_]\+\) .*/\1/p' ;;
    *) _cntr_help "$1" | sed -n "s/^ \+\(-[a-z],\)\?$2 [^{]*{\([^}]*\)}.*/\2/p" | tr ',' '\n' ;;
  esac
}

# Whether an option is followed by a value.
_cntr_takes_value() {
  _cntr_help "$1" | grep -qE -- "^ +(-[a-z],)?$2 [A-Z]|^ +$2,--[a-z-]+ [A-Z]"
}

_cntr() {
  local word=${COMP_WORDS[COMP_CWORD]} previous='' command='' listed=''
  COMPREPLY=()
  ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}
  if [[ -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_cntr_commands) --help --help-all --version" -- "$word")
    return
  fi
  previous=${COMP_WORDS[COMP_CWORD - 1]}
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_cntr_options "$command")" -- "$word")
    return
  fi
  if [[ $previous == --* ]] && _cntr_takes_value "$command" "$previous"; then
    local values
    values=$(_cntr_values "$command" "$previous")
    if [[ -n $values ]]; then
      # Only the last name of a list is completed.
      [[ $word == *,* ]] && listed=${word%,*},
      mapfile -t COMPREPLY < <(compgen -P "$listed" -W "$values" -- "${word##*,}")
      return
    fi
  fi
  mapfile -t COMPREPLY < <(compgen -f -- "$word")
}

complete -o filenames -F _cntr cntr
