#!/usr/bin/env bash
# Updates the screenshots in docs/images from the release executable and the demo company.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

require_packages "${build_packages[@]}" "${browser_packages[@]}"
require_node_packages
build_preset release || stop "The build failed."
node scripts/screenshots.mjs docs/images
