#!/usr/bin/env bash
# Drives a real Chromium against the release executable. The closing line counts the tests.
set -uo pipefail
cd "$(dirname "$0")/.." || exit
source scripts/browser.sh

prepare_browser

report=$(mktemp)
trap 'rm -f "$report"' EXIT
node --test --test-reporter=spec --test-reporter-destination=stdout \
  --test-reporter=tap --test-reporter-destination="$report" </dev/null
status=$?

total() { awk -v name="$1" '$1 == "#" && $2 == name { sum += $3 } END { print sum + 0 }' "$report"; }
passed=$(total pass)
failed=$(($(total fail) + $(total cancelled)))
skipped=$(($(total skipped) + $(total todo)))
if ((passed + failed == 0)) || ((status != 0 && failed == 0)); then failed=$((failed + 1)); fi
echo "$passed passed, $failed failed, $skipped skipped"
((failed == 0))
