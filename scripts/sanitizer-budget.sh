#!/usr/bin/env bash
# Decides whether the sanitizer suite (scripts/test.sh --sanitize: its own
# build in build-asan/ and every test under AddressSanitizer and
# UndefinedBehaviorSanitizer) fits in what is left of a CI run that has already
# taken ELAPSED seconds.
# Runs it: prints the seconds it may take at most (what is left less half the
# margin) and exits 0. Skips it: exits 1. Says why on standard error.
#   Q3_CI_BUDGET         seconds a whole CI run may take (default 5400)
#   Q3_CI_SANITIZE_COST  seconds the sanitizer build and run take on two
#                        cores (default 2700; the figures are in README.md)
#   Q3_CI_MARGIN         seconds kept free at the end of the run (default 600)
#   Q3_CI_SANITIZE       auto (default: when the cost and the margin fit),
#                        always, or never
set -euo pipefail
if [ $# -ne 1 ] || ! [[ $1 =~ ^[0-9]+$ ]]; then
  echo "usage: $0 ELAPSED-SECONDS" >&2
  exit 2
fi
elapsed=$1
budget=${Q3_CI_BUDGET:-5400}
cost=${Q3_CI_SANITIZE_COST:-2700}
margin=${Q3_CI_MARGIN:-600}
mode=${Q3_CI_SANITIZE:-auto}
for value in "$budget" "$cost" "$margin"; do
  if ! [[ $value =~ ^[0-9]+$ ]]; then
    echo "sanitizer suite: '$value' is not a number of seconds" >&2
    exit 2
  fi
done
left=$((budget - elapsed))
limit=$((left - margin / 2))
case "$mode" in
never)
  echo "sanitizer suite: skipped (Q3_CI_SANITIZE=never)" >&2
  exit 1
  ;;
always) ;;
auto)
  if [ $((cost + margin)) -gt "$left" ]; then
    echo "sanitizer suite: skipped, ${left} s left of ${budget} s and it needs about ${cost} s plus ${margin} s of margin" >&2
    exit 1
  fi
  ;;
*)
  echo "sanitizer suite: Q3_CI_SANITIZE must be auto, always or never, not '$mode'" >&2
  exit 2
  ;;
esac
if [ "$limit" -lt 60 ]; then
  echo "sanitizer suite: skipped, only ${left} s left of ${budget} s" >&2
  exit 1
fi
echo "sanitizer suite: ${left} s left of ${budget} s, about ${cost} s needed; stopped after ${limit} s at most" >&2
echo "$limit"
