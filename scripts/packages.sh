# shellcheck shell=bash disable=SC2034
# Debian packages that the scripts need; sourced by them. An entry "command:package" is satisfied when the command
# exists, wherever it comes from; any other entry is the name of a package.

build_packages=(
  g++:g++ cmake:cmake ninja:ninja-build pkg-config:pkg-config ccache:ccache
  libmicrohttpd-dev libgnutls28-dev libdeflate-dev libsqlite3-dev libpq-dev libicu-dev libsodium-dev libical-dev libxml2-dev libtomlplusplus-dev libcli11-dev libspdlog-dev libfmt-dev
)
test_packages=(git:git clang-format:clang-format clang-tidy:clang-tidy libgtest-dev postgresql)
browser_packages=(node:nodejs npm:npm chromium:chromium firefox-esr:firefox-esr ca-certificates fonts-liberation
  faketime:faketime)
device_packages=(python3:python3 vdirsyncer:vdirsyncer khal:khal python3-caldav)
cluster_packages=(node:nodejs nginx-light openssl:openssl)

stop() {
  printf '%s\n' "$*" >&2
  exit 1
}

is_installed() {
  case $1 in
    *:*) command -v "${1%%:*}" >/dev/null ;;
    *) [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]] ;;
  esac
}

as_root() {
  if ((EUID == 0)); then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    stop "Installing packages needs root: run this as root once, or install sudo."
  fi
}

# Installs the missing ones of the given packages, and prints their names.
require_packages() {
  local entry missing=()
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
    stop "This script installs Debian packages, but apt-get was not found. Install yourself: ${*##*:}"
  for entry in "$@"; do
    is_installed "$entry" || missing+=("${entry##*:}")
  done
  ((${#missing[@]})) || return 0

  echo "Installing Debian packages: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get update -qq </dev/null || stop "apt-get update failed: check the network and the package sources."
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null ||
    stop "These packages could not be installed: ${missing[*]}"
  for entry in "$@"; do
    is_installed "$entry" || stop "Still missing after the installation: ${entry%%:*}"
  done
}

# Installs the npm packages of the browser tests.
require_node_packages() {
  (
    cd tests/browser || exit
    [[ -e node_modules/.package-lock.json && ! package-lock.json -nt node_modules/.package-lock.json ]] ||
      npm ci --no-audit --no-fund </dev/null
  ) || stop "npm ci failed: the packages of the browser tests are not installed."
}

# Builds a preset and reports all errors, not only the first. Configures once; afterwards ninja reconfigures when a
# CMake file changes.
build_preset() {
  [[ -f build/$1/build.ninja ]] || cmake --preset "$1" || return
  cmake --build --preset "$1" -- -k 0
}
