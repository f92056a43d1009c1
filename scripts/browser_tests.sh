#!/usr/bin/env bash
# Drives a real Chromium against the release executable. The closing line counts the tests.
set -uo pipefail
cd "$(dirname "$0")/.." || exit
source scripts/browser.sh
source scripts/node_tests.sh

prepare_browser
run_node_tests
