# Completion of orvane for bash.

_orvane() {
  local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} words=
  if ((COMP_CWORD > 2)) && [[ "$command ${COMP_WORDS[2]}" =~ ^(tree pack|import services)$ ]]; then
    command+=" ${COMP_WORDS[2]}"
  fi
  COMPREPLY=()

  if ((COMP_CWORD == 1)); then
    words="apps diff ports check used catalogue tree import lint"
    [[ $word != -* ]] || words="--help --version"
  elif [[ $word == -* ]]; then
    case $command in
      apps) words="--json --section --all --color --output" ;;
      diff) words="--summary --json --assume-action --all --strict --color --output" ;;
      ports) words="--diff --output" ;;
      check) words="--ports --socket --live --proc --against --each --json --all --strict --output" ;;
      used) words="--ports --socket --live --proc --output" ;;
      catalogue)
        words="--upid --expand --json --section --with --add --known --unknown --all --color"
        words+=" --output"
        ;;
      tree) words="--nodes --format --upid --children --all --output" ;;
      "tree pack") words="--nodes --output" ;;
      "import services") words="--first-upid --as --all --output" ;;
      lint) words="--json --all --output" ;;
    esac
    words+=" --help"
  else
    # What is left empty here is completed as a file by readline, unless compopt forbids it.
    case ${COMP_WORDS[COMP_CWORD - 1]} in
      --output | --against | --with | --add) return ;;
      --proc) compopt -o dirnames +o default ;;
      --color) words="auto always never" ;;
      --format) words="text json csv dot" ;;
      --as) words="apps catalogue" ;;
      --assume-action) words="1 2 3 4 5" ;;
      --ports | --socket | --upid | --children | --known | --unknown | --first-upid)
        compopt +o default
        ;;
      tree)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -W pack -- "$word"; compgen -f -- "$word")
        return
        ;;
      import) words=services ;;
      *) [[ $command != @(ports|used) ]] || compopt +o default ;;
    esac
  fi
  [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -o default -F _orvane orvane
