#!/usr/bin/env bash
# Runs one test executable of the sanitizer build with its arguments.
# LeakSanitizer's own tracer now and then faults while it stops the process's
# threads at the exit ("Tracer caught signal 11", then "LeakSanitizer has
# encountered a fatal error"): a failure of the tool, which then checks
# nothing, not a finding. A run that ends so, with no failed test and no leak
# reported, runs once more; every other outcome stands as it is. The second
# run starts the executable from its own folder by a relative name: with
# Debian 12's libsanitizer the fault has been seen to follow a suite started
# by its absolute path (a corrupt record of a loaded library's thread-local
# storage) and never the same suite started so.
set -uo pipefail
log=$(mktemp)
trap 'rm -f "$log"' EXIT
"$@" >"$log" 2>&1
status=$?
cat "$log"
if [ "$status" -ne 0 ] && grep -q "LeakSanitizer has encountered a fatal error" "$log" \
  && ! grep -q "ERROR: LeakSanitizer: detected memory leaks" "$log" && ! grep -q "^FAIL!" "$log"; then
  echo "run-suite: LeakSanitizer's tracer failed at the exit, the suite runs once more"
  (cd "$(dirname "$1")" && "./$(basename "$1")" "${@:2}")
  status=$?
fi
exit "$status"
