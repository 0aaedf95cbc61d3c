#!/usr/bin/env bash
# Runs the tests under valgrind, an executable at a time: no read of memory that was never written, none beyond its end,
# no leak. tools/valgrind_tests.sh [BUILD]; a release build is what users have, and the quickest.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=${1:-build/release}
# A text points to its characters, behind the length of their block: what only such a pointer leads to is not lost.
check=(valgrind --quiet --error-exitcode=9 --leak-check=full --show-leak-kinds=definite,indirect
  --errors-for-leak-kinds=definite,indirect --suppressions=tests/valgrind.supp)

# Millions of values, gigabytes of text and what is measured in time are for the processor itself. Programs that tests
# start are not looked into.
"${check[@]}" "$build/tests/vorn_tests" --gtest_brief=1 \
  --gtest_filter='-OleDateTime.KeepsEvery*:FixedDecimal.Rounds*AsByHand:SmallText.RefusesFourGibibytes*'
"${check[@]}" "$build/tests/vorn_host_tests" --gtest_brief=1 \
  --gtest_filter='-HostileDocument.*:ReadFile.Refuses*:*InTime:*InAMoment:*TakesTime*:*TakeTime*'
# These replace the global allocation themselves, to measure it or to let it fail.
for program in vorn_allocation_failure_tests vorn_host_allocation_failure_tests vorn_archive_memory_tests; do
  "${check[@]}" --soname-synonyms=somalloc=nouserintercepts "$build/tests/$program" --gtest_brief=1
done
echo "valgrind found nothing"
