# shellcheck shell=bash
# What driving a browser takes; sourced by the scripts that do, in the repository's folder.

source scripts/packages.sh

# Installs what is missing, names the release executable in ORLUNE and goes to tests/browser.
prepare_browser() {
  require_packages "${browser_test_packages[@]}"
  [[ -x build/release/orlune ]] || stop "build/release/orlune is missing; ./test builds it."
  export ORLUNE=$PWD/build/release/orlune

  cd tests/browser || exit
  if [[ ! -e node_modules/.package-lock.json || package-lock.json -nt node_modules/.package-lock.json ]]; then
    npm ci --no-audit --no-fund </dev/null || stop "The packages of the browser tests could not be installed."
  fi
}
