# Completion of kelvane for bash. Settings and their values are asked of the program itself.

# The names of all settings: what `settings list` begins its lines with.
_kelvane_settings() { "$1" settings list 2>/dev/null | while read -r key _; do echo "$key"; done; }

# _kelvane_values PROGRAM KEY: what the setting may be set to, as far as it can be listed.
_kelvane_values() {
  "$1" settings list 2>/dev/null | while read -r key type value; do
    [[ $key == "$2" ]] || continue
    case $type:$key in
      boolean:*) echo true false ;;
      choice:trayIconShape) echo automatic wide square ;;
      choice:trayIconColor) echo automatic light dark ;;
      *) echo "$value" ;;
    esac
  done
}

_kelvane() {
  local program=$1 word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local command='' after=() values='' index key
  COMPREPLY=()
  # The command, and the words that follow it.
  for ((index = 1; index < COMP_CWORD; index++)); do
    if [[ $command ]]; then
      after+=("${COMP_WORDS[index]}")
    elif [[ ${COMP_WORDS[index]} == --power-supply ]]; then
      ((index++))
    elif [[ ${COMP_WORDS[index]} != -* ]]; then
      command=${COMP_WORDS[index]}
    fi
  done

  # bash takes KEY=VALUE for three words, the last of which may not have been begun.
  key=${COMP_WORDS[COMP_CWORD - 2]-}
  if [[ $word == = ]]; then key=$before before='=' word=''; fi

  case $command:$before in
    *:--power-supply | demo:--out)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      return
      ;;
    render:--out)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
    render:--shape) values='wide square' ;;
    render:--bar) values='light dark' ;;
    render:--warning) values='none early final' ;;
    render:--set)
      compopt -o nospace
      mapfile -t COMPREPLY < <(compgen -S = -W "$(_kelvane_settings "$program")" -- "$word")
      return
      ;;
    render:=) values=$(_kelvane_values "$program" "$key") ;;
    render:--scale | render:--height | render:--font | render:--level) return ;;
    render:--estimate | render:--minutes-until-full) return ;;
    settings:*)
      case ${#after[@]}:${after[0]-} in
        0:*) values='list get set --help' ;;
        1:get | 1:set) values=$(_kelvane_settings "$program") ;;
        2:set) values=$(_kelvane_values "$program" "${after[1]}") ;;
      esac
      ;;
    :*) values='status details render settings doctor demo quit --help --version --power-supply --no-upower' ;;
    status:* | details:* | doctor:*) values='--json --help --power-supply --no-upower' ;;
    demo:*) values='--out --help' ;;
    quit:*) values='--help' ;;
    render:*)
      values='--out --scale --height --shape --bar --font --set --level --on-power --not-charging
              --estimate --minutes-until-full --warning --help --power-supply --no-upower'
      ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
}
complete -F _kelvane kelvane
