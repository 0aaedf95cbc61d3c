#!/usr/bin/env bash
# Takes every sample through the tool's main jobs: look at it, check it, make a page for the browser and a project of
# it, edit that, write documents of all editions from both, and check the results. What came back is compared with what
# went in, and what was edited in the project with what the same steps make of the document. One sample is exported in
# every format, and a section of it is drawn.
# VORN_TOOL names another tool than the release build's; OUT another directory for the results.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tool=${VORN_TOOL:-build/release/host/cli/vorn}
out=${OUT:-out}
editions=(2.0 4.0 4.1 maff-1.0)

fail() {
  printf '\nDemo stopped: %s\n' "$1" >&2
  exit 1
}

# Shows the command as the reader would type it, runs it, and indents what it prints.
run() {
  printf '$ vorn %s\n' "$*"
  "$tool" "$@" 2>&1 | sed 's/^/    /' || fail "\`vorn $*\` did not succeed."
}

# What only differs because the tool ran at another second: a document is given a file information with the present time
# when its source has none.
without_given_time() {
  local source=$1 document=$2
  if grep -q '<tsf:FileInfo' "$source"; then
    cat "$document"
  else
    sed 's/\(<tsf:FileInfo createDate="\)[^"]*"/\1"/' "$document"
  fi
}

# Writes a document in every edition, and checks each.
write_editions() {
  local from=$1 name=$2
  for edition in "${editions[@]}"; do
    run convert "$from" "$out/$name-$edition.xml" --edition "$edition"
    run check "$out/$name-$edition.xml"
    written=$((written + 1))
  done
}

# Compares the documents of a project with those of a document that has to hold the same design.
compare_editions() {
  local from=$1 name=$2
  for edition in "${editions[@]}"; do
    "$tool" convert "$from" "$out/expected.xml" --edition "$edition" >/dev/null || fail "$from, $edition"
    cmp <(without_given_time "$from" "$out/expected.xml") <(without_given_time "$from" "$out/$name-$edition.xml") ||
      fail "the project gives another document of edition $edition than $from does."
    rm "$out/expected.xml"
    compared=$((compared + 1))
  done
}

# Edits a document like the project, for comparison; where it has existing ground, the design has to meet it.
edit_for_comparison() {
  local from=$1 to=$2 report
  shift 2
  report=$("$tool" edit "$from" "$to" "$@" --json) || fail "$from could not be edited."
  if grep -q '<tsf:ExistingBuildForm' "$from"; then
    grep -q '"what": "crossings found"' <<<"$report" || fail "no crossing with the ground was found in $from."
  fi
}

# Height of the centre line at which a sample's design meets most of its ground. Documents do not tell it.
height_of() {
  case $1 in
    road-4.1) echo 78 ;;
    road-with-geometry-4.0) echo 27 ;;
    farm-maff-1.0) echo 62 ;;
    *) echo 10 ;;
  esac
}

[[ -x $tool ]] || fail "there is no tool at $tool; \`make demo\` builds it."
shopt -s nullglob
samples=(samples/*.xml)
[[ ${#samples[@]} -gt 0 ]] || fail "there are no documents in samples/."
mkdir -p "$out"

written=0
compared=0
for sample in "${samples[@]}"; do
  name=$(basename "$sample" .xml)
  project=$out/$name.vorn
  printf '\n== %s ==\n' "$sample"
  run info "$sample"
  run check "$sample"
  run forms "$sample"
  run report "$sample" -o "$out/$name.html"

  printf '\n-- a project of it, and documents of the project --\n'
  run convert "$sample" "$project"
  run info "$project"
  write_editions "$project" "$name"
  compare_editions "$sample" "$name"

  printf '\n-- the project edited: placed, shifted, its crossings with the ground recomputed --\n'
  steps=(--recalc "$(height_of "$name")" --shift "0.25,0" --cross-points --regulate)
  run edit "$project" "$project" "${steps[@]}"
  run check "$project"
  write_editions "$project" "$name-edited"
  edit_for_comparison "$sample" "$out/edited.xml" "${steps[@]}"
  compare_editions "$out/edited.xml" "$name-edited"
  rm "$out/edited.xml"

  printf '\n-- a turned-over design, straight from the document --\n'
  run edit "$sample" "$out/$name-mirrored.xml" --mirror
  run check "$out/$name-mirrored.xml"
  written=$((written + 1))
done

printf '\n== what CAD, scripts and papers get of %s ==\n' "${samples[0]}"
for format in dxf csv geojson svg; do
  exported=$out/exported.$format
  rm -f "$exported"
  if [[ $format == svg ]]; then
    run plot "${samples[0]}" --index 1 -o "$exported"
  else
    run export "${samples[0]}" -o "$exported"
  fi
  [[ -s $exported ]] || fail "$exported is empty."
done

printf '\nDone: %d samples read; %d projects and %d documents written to %s/ and checked;\n' \
  "${#samples[@]}" "${#samples[@]}" "$written" "${out%/}"
printf '%d documents from projects are the same as those from the samples, edited alike.\n' "$compared"
printf 'The cross sections to look at, in a browser: %s/road-4.1.html\n' "$(cd "$out" && pwd)"
