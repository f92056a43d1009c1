#!/usr/bin/env bash
# Makes the pictures in docs/images anew, from the release executable and the demo company.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/browser.sh

images=$PWD/docs/images
prepare_browser
node screenshots.mjs "$images"
