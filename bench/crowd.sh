#!/usr/bin/env bash
# Visitors beside 10,000 idle connections, and while 1,000 more arrive. Needs build/release/orlune and
# build/bench/make_calendar_file, which scripts/bench.sh builds. Takes about 15 seconds.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source bench/server.sh

start_server
python3 bench/crowd.py "$address" "$server" "$(log_in $user)"
