#!/usr/bin/env bash
# What clang-tidy and cppcheck find in the sources: nothing, or this fails. Needs a configured build of clang:
# tools/static_analysis.sh [BUILD] [PATTERN], the whole of vorn/ and host/ unless told otherwise.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=${1:-build/clang}
pattern=${2:-/(vorn|host)/.*\.cpp$}

# cppcheck 2.10 takes a view for what it looks into, does not know immediately called lambdas in constants, and cannot
# know that keys are taken by value on purpose.
cppcheck --quiet --std=c++20 --enable=warning,performance,portability -I. --error-exitcode=1 -j "$(nproc)" \
  --suppress=missingIncludeSystem --suppress=invalidLifetime:host/document/carried_storage.cpp \
  --suppress=syntaxError:vorn/platform/code_page_932.cpp --suppress=passedByValue:vorn/types/bld_name_map.cpp \
  --suppress=returnTempReference:vorn/model/composed_pnt.h \
  --template='{file}:{line}: {severity}: {id}: {message}' vorn host

run-clang-tidy-14 -p "$build" -quiet -j "$(nproc)" "$pattern" 2>/dev/null | tee "$build/clang_tidy.log" | grep -E 'warning:|error:' && exit 1
echo "clang-tidy and cppcheck found nothing"
