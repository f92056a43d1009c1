# shellcheck shell=bash
# Running tests with node; sourced by the scripts that do.

# Runs the tests of the current folder. The closing line counts them.
run_node_tests() {
  local report status passed failed skipped
  report=$(mktemp)
  node --test --test-reporter=spec --test-reporter-destination=stdout \
    --test-reporter=tap --test-reporter-destination="$report" </dev/null
  status=$?

  total() { awk -v name="$1" '$1 == "#" && $2 == name { sum += $3 } END { print sum + 0 }' "$report"; }
  passed=$(total pass)
  failed=$(($(total fail) + $(total cancelled)))
  skipped=$(($(total skipped) + $(total todo)))
  rm -f "$report"
  if ((passed + failed == 0)) || ((status != 0 && failed == 0)); then failed=$((failed + 1)); fi
  echo "$passed passed, $failed failed, $skipped skipped"
  ((failed == 0))
}
