#!/usr/bin/env bash
# Runs three servers behind nginx as docs/scaling.md sets them up, kills and restarts them and their database under
# load. The closing line counts the tests.
set -uo pipefail
cd "$(dirname "$0")/.." || exit
source scripts/packages.sh
source scripts/node_tests.sh

require_packages "${cluster_test_packages[@]}"
[[ -x build/release/orlune ]] || stop "build/release/orlune is missing; ./test builds it."
[[ ${ORLUNE_TEST_POSTGRESQL-} ]] || exec scripts/with_postgresql.sh scripts/cluster_tests.sh
export ORLUNE=$PWD/build/release/orlune PATH=$PATH:/usr/sbin

cd tests/cluster || exit
run_node_tests
