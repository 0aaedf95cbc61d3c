#!/usr/bin/env bash
# Takes every sample through the tool's main jobs: look at it, check it, write it in every edition, edit it, and check
# the results.
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

[[ -x $tool ]] || fail "there is no tool at $tool; \`make demo\` builds it."
shopt -s nullglob
samples=(samples/*.xml)
[[ ${#samples[@]} -gt 0 ]] || fail "there are no documents in samples/."
mkdir -p "$out"

written=0
for sample in "${samples[@]}"; do
  name=$(basename "$sample" .xml)
  printf '\n== %s ==\n' "$sample"
  run info "$sample"
  run check "$sample"
  run forms "$sample"
  for edition in "${editions[@]}"; do
    result=$out/$name-$edition.xml
    rm -f "$result"
    run convert "$sample" "$result" --edition "$edition"
    run check "$result"
    written=$((written + 1))
  done
  result=$out/$name-edited.xml
  rm -f "$result"
  run edit "$sample" "$result" --mirror --shift 0.25,0 --regulate
  run check "$result"
  written=$((written + 1))
done

printf '\nDone: %d samples read, %d documents written to %s/ and checked.\n' "${#samples[@]}" "$written" "${out%/}"
