# Completion of declarium-cli for bash. Source this file, or install it as
# /usr/share/bash-completion/completions/declarium-cli.

_declarium_cli_options() {
  local common='--help --json --color --no-history'
  case $1 in
    new | rename | delete) echo "$common --force" ;;
    export) echo "$common --target --force" ;;
    list) echo "$common --kind" ;;
    import) echo "$common --replace --create --reading --encoding --force" ;;
    parse) echo "$common --modules --uses --target" ;;
    check) echo "$common --against --target --windows --format --fail-on --baseline --fix --rules" ;;
    audit) echo "$common --against --format --output -o --fail-on --apply --replace --diff --force" ;;
    convert) echo "$common --target --against --output -o --in-place --diff --declare-wide --force" ;;
    generate) echo "$common --output -o --library --target --check --force" ;;
    shared) echo "$common --closure --constants" ;;
    find | complete) echo "$common --kind" ;;
    search)
      echo "$common --kinds --name --name-whole --type --type-whole --const --const-whole" \
        "--value --value-whole --value-number --arg --arg-whole --text --text-whole"
      ;;
    restore) echo "$common --output -o --force" ;;
    basket) echo "$common --scope --target --closure --output -o --force" ;;
    insert)
      echo "$common --scope --target --closure --encoding --force --missing --project --dry-run" \
        "--diff --as --without"
      ;;
    missing) echo "$common --library --scope --target --insert --dry-run --diff" ;;
    show) echo "$common --target" ;;
    databases | facts | history) echo "$common" ;;
    *) echo "$common --version" ;;
  esac
}

# The values of an option that has a fixed set of them.
_declarium_cli_values() {
  case $1 in
    --color) echo 'auto always never' ;;
    --kind | --kinds) echo 'const declare type' ;;
    --scope) echo 'Private Public' ;;
    --reading) echo 'vb literal' ;;
    --windows) echo '5.1 6.0 6.1 10.0' ;;
    --format) echo 'text json sarif html' ;;
    --fail-on) echo 'error warning note' ;;
    --target) echo 'vb6 vba7 vba7-only twinbasic' ;;
    --encoding)
      echo 'windows-874 windows-1250 windows-1251 windows-1252 windows-1253 windows-1254' \
        'windows-1255 windows-1256 windows-1257 windows-1258 utf-8 utf-16le utf-16be'
      ;;
  esac
}

_declarium_cli() {
  local commands='new list export rename delete databases import parse check audit convert show shared
    facts find complete search basket insert missing generate history restore'
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command='' word values
  COMPREPLY=()
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ " ${commands//$'\n'/ } " == *" $word "* ]]; then
      command=$word
      break
    fi
  done

  values=$(_declarium_cli_values "$previous")
  if [[ -n $values ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$current")
  elif [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_declarium_cli_options "$command")" -- "$current")
  elif [[ -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}

complete -o filenames -F _declarium_cli declarium-cli
