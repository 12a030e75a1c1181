#!/usr/bin/env bash
# The scripts CI runs besides the suites: the format check fails on a file
# clang-format would change and names it, and passes on a formatted tree; the
# sanitizer suite runs only when its cost and the margin fit in what is left
# of the time budget.
# Run with the repository's root folder.
set -euo pipefail
root=$1
fail() { echo "FAIL: $*"; exit 1; }

budget() { "$root/scripts/sanitizer-budget.sh" "$@" 2>/dev/null; }
export Q3_CI_BUDGET=5400 Q3_CI_SANITIZE_COST=2700 Q3_CI_MARGIN=600 Q3_CI_SANITIZE=auto
[ "$(budget 1000)" = 4100 ] || fail "1000 s gone: the suite should run, stopped after 4100 s"
[ "$(budget 2100)" = 3000 ] || fail "2100 s gone: 3300 s left cover cost and margin exactly"
! budget 2101 >/dev/null || fail "2101 s gone: no room left for the cost and the margin"
Q3_CI_SANITIZE_COST=4000 budget 1000 >/dev/null && fail "a cost over the time left should skip the suite"
Q3_CI_SANITIZE=never budget 0 >/dev/null && fail "never should skip the suite"
[ "$(Q3_CI_SANITIZE=always budget 3000)" = 2100 ] || fail "always should run the suite within the time left"
status=0
Q3_CI_SANITIZE=sometimes budget 0 >/dev/null || status=$?
[ "$status" = 2 ] || fail "an unknown mode should be an error, not a skip"
echo "PASS: sanitizer budget"

# A suite whose run LeakSanitizer's tracer broke runs once more; a leak or a
# failed test stands.
fake=$(mktemp -d)
cat >"$fake/suite" <<'SUITE'
#!/usr/bin/env bash
count=$(cat "$0.runs" 2>/dev/null || echo 0)
echo $((count + 1)) >"$0.runs"
echo "Totals: 3 passed, 0 failed"
if [ "$count" = 0 ]; then
  echo "Tracer caught signal 11: addr=0x198"
  echo "==1==LeakSanitizer has encountered a fatal error."
  [ "${1:-}" = leak ] && echo "==1==ERROR: LeakSanitizer: detected memory leaks"
  [ "${1:-}" = fail ] && echo "FAIL!  : T::f() wrong"
  exit 1
fi
exit 0
SUITE
chmod +x "$fake/suite"
"$root/scripts/sanitizer/run-suite.sh" "$fake/suite" >/dev/null || fail "a broken tracer should give a second run"
[ "$(cat "$fake/suite.runs")" = 2 ] || fail "the suite should have run twice"
for outcome in leak fail; do
  rm -f "$fake/suite.runs"
  ! "$root/scripts/sanitizer/run-suite.sh" "$fake/suite" "$outcome" >/dev/null || fail "a $outcome should stand"
  [ "$(cat "$fake/suite.runs")" = 1 ] || fail "a $outcome should not run the suite again"
done
rm -rf "$fake"
echo "PASS: sanitizer suite runner"

if ! command -v clang-format >/dev/null; then
  echo "SKIP: clang-format is missing (scripts/install-deps.sh installs it)"
  exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/scripts"
cp "$root/.clang-format" "$work/"
cp "$root/scripts/format-check.sh" "$work/scripts/"
cd "$work"
git init -q .
printf '#pragma once\n\nclass TQ3Prova\n{\npublic:\n    int Valore() const { return m_valore; }\n\nprivate:\n    int m_valore = 0;\n};\n' >Prova.h
git add Prova.h
output=$(scripts/format-check.sh 2>&1) || fail "a formatted file is reported: $output"
printf 'int  Doppio(int x) {return 2*x;}\n' >Doppio.cpp
git add Doppio.cpp
status=0
output=$(scripts/format-check.sh 2>&1) || status=$?
[ "$status" = 1 ] || fail "a file to format should fail the check (exit $status)"
grep -qx 'not formatted: Doppio.cpp' <<<"$output" || fail "the check does not name the file: $output"
! grep -q 'not formatted: Prova.h' <<<"$output" || fail "the check names a formatted file"
echo "PASS: format check"
