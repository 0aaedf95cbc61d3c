# Completion of vorn for bash. Written by tools/describe_command_line.py.

_vorn() {
  local IFS=$' \n' current="${COMP_WORDS[COMP_CWORD]}" command="" words="" files=0 index
  COMPREPLY=()
  for ((index = 1; index < COMP_CWORD; ++index)); do
    case "$command" in
      "" | "settings") ;;
      *) break ;;
    esac
    [[ ${COMP_WORDS[index]} == -* ]] || command="${command:+$command }${COMP_WORDS[index]}"
  done
  local previous="${COMP_WORDS[COMP_CWORD - 1]}"
  case "${command:+$command }$previous" in
    "edit --recalc" | \
    "edit --remove-form" | \
    "edit --rename" | \
    "edit --retype" | \
    "edit --shift" | \
    "edit --sort" | \
    "export --height" | \
    "export --scale" | \
    "plot --exaggerate" | \
    "plot --height" | \
    "plot --index" | \
    "plot --name" | \
    "plot --scale" | \
    "plot --set" | \
    "plot --station" | \
    "report --exaggerate" | \
    "report --height" | \
    "sample --sections" | \
    "sample --seed")
      :
      return ;;
    "convert --store-version")
      COMPREPLY=($(compgen -W "05.00 05.50 06.00" -- "$current"))
      return ;;
    "check --assume" | \
    "convert --assume" | \
    "convert --edition" | \
    "edit --assume" | \
    "export --assume" | \
    "forms --assume" | \
    "info --assume" | \
    "plot --assume" | \
    "report --assume" | \
    "sample --edition")
      COMPREPLY=($(compgen -W "2.0 4.0 4.1 maff-1.0" -- "$current"))
      return ;;
    "export --format")
      COMPREPLY=($(compgen -W "csv dxf geojson" -- "$current"))
      return ;;
    "export --language" | \
    "plot --language" | \
    "report --language")
      COMPREPLY=($(compgen -W "en ja" -- "$current"))
      return ;;
    "sample --kind")
      COMPREPLY=($(compgen -W "farm river road" -- "$current"))
      return ;;
    "export --output" | \
    "export -o" | \
    "plot --output" | \
    "plot -o" | \
    "report --output" | \
    "report -o")
      compopt -o filenames; COMPREPLY=($(compgen -f -- "$current"))
      return ;;
    "export --what")
      COMPREPLY=($(compgen -W "ground points targets" -- "$current"))
      return ;;
    "convert --encoding" | \
    "edit --encoding" | \
    "sample --encoding")
      COMPREPLY=($(compgen -W "utf-8 shift_jis" -- "$current"))
      return ;;
  esac
  case "$command" in
    "") words="-h --help --version info check convert edit export forms plot report sample datums crs settings" files=0 ;;
    "info") words="-h --help --assume --lossy --json" files=1 ;;
    "check") words="-h --help --assume --verbose --lossy --json" files=1 ;;
    "convert") words="-h --help --edition --encoding --store-version --assume --lossy --json" files=1 ;;
    "edit") words="-h --help --recalc --cross-points --mirror --shift --retype --sort --remove-form --rename --clear-codes --regulate --encoding --assume --lossy --verbose --json" files=1 ;;
    "export") words="-h --help -o --output --format --height --scale --language --what --bom --assume --lossy --json" files=1 ;;
    "forms") words="-h --help --assume --lossy --json" files=1 ;;
    "plot") words="-h --help --station --name --set --index -o --output --scale --exaggerate --height --language --assume --lossy --json" files=1 ;;
    "report") words="-h --help -o --output --height --exaggerate --language --assume --lossy --json" files=1 ;;
    "sample") words="-h --help --sections --kind --edition --seed --encoding --json" files=1 ;;
    "datums") words="-h --help --json" files=0 ;;
    "crs") words="-h --help --json" files=0 ;;
    "settings") words="-h --help list get set" files=0 ;;
    "settings list") words="-h --help --ts --json" files=0 ;;
    "settings get") words="-h --help --ts --json" files=0 ;;
    "settings set") words="-h --help --ts --json" files=0 ;;
  esac
  COMPREPLY=($(compgen -W "$words" -- "$current"))
  if [[ $files == 1 && $current != -* ]]; then
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen -f -- "$current"))
  fi
}

complete -F _vorn vorn
