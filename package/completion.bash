# Words for the command lines of sorvanto and its tools.
# shellcheck shell=bash

_sorvanto_words() {
  local before=${COMP_WORDS[COMP_CWORD - 1]} word=${COMP_WORDS[COMP_CWORD]}
  case "$before" in
    --folder) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    --database | --options | --pdf | --xls | --state | --link) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    --language)
      mapfile -t COMPREPLY < <(compgen -W "English Spanish German French Russian Portuguese Italian Swiss" -- "$word") ;;
    --fault) mapfile -t COMPREPLY < <(compgen -W "$(sorvanto-mixersim --list-faults 2>/dev/null)" -- "$word") ;;
    *) return 1 ;;
  esac
  compopt -o filenames
}

_sorvanto() {
  _sorvanto_words && return
  mapfile -t COMPREPLY < <(compgen -W "--folder --copy --lay-out --help --version" -- "${COMP_WORDS[COMP_CWORD]}")
}

_sorvanto_db() {
  local word=${COMP_WORDS[COMP_CWORD]}
  if [ "$COMP_CWORD" = 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "create sample check backup copy restore archive update forget --help --version" -- "$word")
  elif [ "$word" != "${word#-}" ]; then
    mapfile -t COMPREPLY < <(compgen -W "--rows --keep --patient" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
    compopt -o filenames
  fi
}

_sorvanto_report() {
  _sorvanto_words && return
  local word=${COMP_WORDS[COMP_CWORD]} words
  words="--database --pdf --xls --language --options --folder --formula --log --rx --patient --quantity --labels"
  words+=" --position --from --to --lot --ndc --name --batch --help --version"
  [ "$COMP_CWORD" = 1 ] && words="worksheet formula-log batch-labels log-report jar-usage rx-labels patient
    chemicals recall --help --version"
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

_sorvanto_mixersim() {
  _sorvanto_words && return
  mapfile -t COMPREPLY < <(compgen -W "--link --speed --fault --list-faults --state --serial --parent-pid --help
    --version" -- "${COMP_WORDS[COMP_CWORD]}")
}

complete -F _sorvanto sorvanto
complete -F _sorvanto_db sorvanto-db
complete -F _sorvanto_report sorvanto-report
complete -F _sorvanto_mixersim sorvanto-mixersim
