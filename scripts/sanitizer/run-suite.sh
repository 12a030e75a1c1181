#!/usr/bin/env bash
# Runs one test executable of the sanitizer build with its arguments.
# LeakSanitizer's own tracer now and then faults while it stops the process's
# threads at the exit ("Tracer caught signal 11", then "LeakSanitizer has
# encountered a fatal error"): a failure of the tool, which then checks
# nothing, not a finding. A run that ends so, with no failed test and no leak
# reported, runs once more; every other outcome stands as it is.
set -uo pipefail
log=$(mktemp)
trap 'rm -f "$log"' EXIT
"$@" >"$log" 2>&1
status=$?
cat "$log"
if [ "$status" -ne 0 ] && grep -q "LeakSanitizer has encountered a fatal error" "$log" \
  && ! grep -q "ERROR: LeakSanitizer: detected memory leaks" "$log" && ! grep -q "^FAIL!" "$log"; then
  echo "run-suite: LeakSanitizer's tracer failed at the exit, the suite runs once more"
  "$@"
  status=$?
fi
exit "$status"
