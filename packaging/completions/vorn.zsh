#compdef vorn
# Completion of vorn for zsh. Written by tools/describe_command_line.py.

_vorn() {
  local state line
  local -a commands
  commands=(
    'info:Show what a document or project holds'
    'check:Tell everything that is wrong in a document or project'
    'convert:Write a document or project (.vorn) as the other, or anew'
    'edit:Edit the cross sections of a document or project, step by step in the order given'
    'export:Write the cross sections for CAD (dxf) and for scripts'
    'forms:List the build forms with their attributes and pavement category'
    'plot:Draw a cross section as SVG'
    'report:Write a page for the browser\: every cross section with its drawing and what is wrong in it'
    'sample:Write a realistic synthetic document or project, for trying out and tests'
    'datums:Show the vertical datums with the heights of their zeros'
    'crs:Show the coordinate systems and geodetic datums with their codes'
    'settings:List, show and change the user'\''s settings'
  )
  _arguments -C '(-h --help)'{-h,--help}'[Print this help message and exit]' --version'[Display program version information and exit]' '1: :->command' '*:: :->argument'
  case $state in
    command) _describe command commands ;;
    argument)
      case $line[1] in
        info)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --lossy'[show characters outside code page 932 as 〓]' \
          --json'[JSON for programs]' \
          ':the document or project (.vorn):_files'
          ;;
        check)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --verbose'[list every note, not only how many there are]' \
          --lossy'[read characters outside code page 932 as 〓]' \
          --json'[JSON for programs]' \
          ':the document or project (.vorn):_files'
          ;;
        convert)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --edition'[edition to write (the document'\''s own unless told otherwise)]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --encoding'[encoding of the written document (utf-8 unless told otherwise)]:ENCODING:(utf-8 shift_jis)' \
          --store-version'[store version of a project to write]:TEXT:(05.00 05.50 06.00)' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --lossy'[replace characters outside code page 932 by 〓]' \
          --json'[JSON for programs]' \
          ':the document or project:_files' \
          ':what to write, a project when it ends with .vorn; it may be IN:_files'
          ;;
        edit)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          '*'--recalc'[place the points from the height of the centre line in metres, or from each section'\''s own (section)]:HEIGHT: ' \
          '*'--cross-points'[recompute the crossings of every section that has existing ground]' \
          '*'--mirror'[exchange left and right]' \
          '*'--shift'[shift the design sideways, in metres; HEIGHT is noted and moves nothing]:DIST,HEIGHT: ' \
          '*'--retype'[give the sections a work type on the left and one on the right]:LEFT,RIGHT: ' \
          '*'--sort'[put the forms into this order; others follow behind]:NAME,NAME: ' \
          '*'--remove-form'[remove a form from every section, with its control targets]:NAME: ' \
          '*'--rename'[rename the forms of a type and a name]:TYPE: ' \
          '*'--clear-codes'[empty the codes of all points]' \
          '*'--regulate'[put the control targets into their canonical form and remove repeated ones]' \
          '*'--encoding'[encoding of the written document (its own unless told otherwise)]:ENCODING:(utf-8 shift_jis)' \
          '*'--assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          '*'--lossy'[replace characters outside code page 932 by 〓]' \
          '*'--verbose'[tell what each step changed in each section]' \
          '*'--json'[JSON for programs]' \
          ':the document or project (.vorn):_files' \
          ':what to write, a project when it ends with .vorn; it may be IN:_files'
          ;;
        export)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          '(-o --output)'{-o,--output}'[the file to write (the standard output unless told otherwise)]:OUT:_files' \
          --format'[dxf, csv or geojson (what the name of OUT ends with unless told otherwise)]:FORMAT:(csv dxf geojson)' \
          --height'[height of the centre line in metres, where the design does not tell it]:H: ' \
          --scale'[dxf\: texts and marks are as large as on paper at 1\:N (the largest usual scale that fits)]:N: ' \
          --language'[dxf\: words of the drawing itself, en (default) or ja]:LANGUAGE:(en ja)' \
          --what'[csv\: points, ground or targets (points unless told otherwise)]:WHAT:(ground points targets)' \
          --bom'[csv\: begin with a byte-order mark, for spreadsheets]' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --lossy'[read characters outside code page 932 as 〓]' \
          --json'[JSON for programs]' \
          ':the document or project (.vorn):_files'
          ;;
        forms)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --lossy'[read characters outside code page 932 as 〓]' \
          --json'[JSON for programs]' \
          ':the document or project (.vorn):_files'
          ;;
        plot)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --station'[station of the cross section\: in metres, or as the document counts (No.6+0.0000)]:TEXT: ' \
          --name'[name of the cross section]:TEXT: ' \
          --set'[number of the set, from 1]:INT: ' \
          --index'[number of the cross section in its set, from 1]:INT: ' \
          '(-o --output)'{-o,--output}'[the SVG file to write (otherwise the standard output)]:OUT:_files' \
          --scale'[draw at 1\:N (the largest usual scale that fits A3)]:N: ' \
          --exaggerate'[draw heights so many times larger than widths]:N: ' \
          --height'[height of the centre line in metres, where the design does not tell it]:H: ' \
          --language'[language of the words in the drawing\: en (default) or ja]:LANGUAGE:(en ja)' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --lossy'[read characters outside code page 932 as 〓]' \
          --json'[JSON for programs, about what was written]' \
          ':the document or project (.vorn):_files'
          ;;
        report)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          '(-o --output)'{-o,--output}'[the page to write]:PAGE:_files' \
          --height'[height of the centre line in metres, where the design does not tell it]:H: ' \
          --exaggerate'[draw heights so many times larger than widths]:N: ' \
          --language'[language that the page begins with\: en or ja (the reader'\''s own unless told otherwise)]:LANGUAGE:(en ja)' \
          --assume'[read a document whose edition is not recognised as one of this edition]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --lossy'[read characters outside code page 932 as 〓]' \
          --json'[JSON for programs]' \
          ':the document or project (.vorn):_files'
          ;;
        sample)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --sections'[number of cross sections]:INT: ' \
          --kind'[kind of work (road unless told otherwise)]:KIND:(farm river road)' \
          --edition'[edition to write (4.1 unless told otherwise)]:EDITION:(2.0 4.0 4.1 maff-1.0)' \
          --seed'[another number gives another terrain]:UINT: ' \
          --encoding'[encoding of the written document (utf-8 unless told otherwise)]:ENCODING:(utf-8 shift_jis)' \
          --json'[JSON for programs]' \
          ':the document to write, or a project when it ends with .vorn:_files'
          ;;
        datums)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --json'[JSON for programs]'
          ;;
        crs)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --json'[JSON for programs]'
          ;;
        settings)
          _vorn_settings
          ;;
      esac
      ;;
  esac
}

_vorn_settings() {
  local state line
  local -a commands
  commands=(
    'list:Every setting with its value, its default and whether it is stored'
    'get:One setting'
    'set:Store a setting'
  )
  _arguments -C '(-h --help)'{-h,--help}'[Print this help message and exit]' '1: :->command' '*:: :->argument'
  case $state in
    command) _describe command commands ;;
    argument)
      case $line[1] in
        list)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --ts'[the settings of the total-station edition]' \
          --json'[JSON for programs]'
          ;;
        get)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --ts'[the settings of the total-station edition]' \
          --json'[JSON for programs]' \
          ':the setting, such as RoadInfo.speed: '
          ;;
        set)
          _arguments -S '(-h --help)'{-h,--help}'[Print this help message and exit]' \
          --ts'[the settings of the total-station edition]' \
          --json'[JSON for programs]' \
          ':the setting, such as RoadInfo.speed: ' \
          ':an integer or a text; after --, one may begin with a dash: '
          ;;
      esac
      ;;
  esac
}

_vorn "$@"
