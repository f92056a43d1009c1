#!/usr/bin/env bash
# Builds and runs the benchmarks, which docs/performance.md describes. Arguments are passed to Google Benchmark, for
# example: scripts/bench.sh --benchmark_filter=/20000
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

require_packages "${build_packages[@]}" libbenchmark-dev postgresql wrk:wrk curl:curl sqlite3:sqlite3 python3:python3
build_preset bench || stop "The build of the benchmarks failed."
build_preset release || stop "The build failed."

for pages in month_page working_pages; do
  "build/bench/${pages}_benchmark" --benchmark_enable_random_interleaving=true "$@"
done
bench/load.sh
bench/savers.sh
bench/crowd.sh
python3 bench/devices.py
scripts/with_postgresql.sh python3 bench/devices.py
for figures in far_database processor_time growth; do
  scripts/with_postgresql.sh "build/bench/$figures"
done
