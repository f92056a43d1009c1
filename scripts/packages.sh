# shellcheck shell=bash disable=SC2034
# Debian packages that the scripts need; sourced by them. An entry "command:package" is satisfied by the command,
# wherever it comes from; any other entry names a package.

build_packages=(
  g++:g++ cmake:cmake ninja:ninja-build pkg-config:pkg-config ccache:ccache
  libmicrohttpd-dev libgnutls28-dev libsqlite3-dev libpq-dev libicu-dev libsodium-dev libtomlplusplus-dev libcli11-dev libspdlog-dev libfmt-dev
)
test_packages=(git:git clang-format:clang-format clang-tidy:clang-tidy libgtest-dev postgresql)
browser_packages=(node:nodejs npm:npm chromium:chromium ca-certificates fonts-liberation
  faketime:faketime)
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

# Installs what is missing of the entries given, and says so.
require_packages() {
  local entry missing=()
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
    stop "This script installs Debian packages, and apt-get is not here. Needed are: ${*##*:}"
  for entry in "$@"; do
    is_installed "$entry" || missing+=("${entry##*:}")
  done
  ((${#missing[@]})) || return 0

  echo "Installing Debian packages: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get update -qq </dev/null || stop "The package lists could not be fetched."
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null ||
    stop "These packages could not be installed: ${missing[*]}"
  for entry in "$@"; do
    is_installed "$entry" || stop "Still missing after the installation: ${entry%%:*}"
  done
}

# Installs what the browser tests take from npm.
require_node_packages() {
  (
    cd tests/browser || exit
    [[ -e node_modules/.package-lock.json && ! package-lock.json -nt node_modules/.package-lock.json ]] ||
      npm ci --no-audit --no-fund </dev/null
  ) || stop "The packages of the browser tests could not be installed."
}

# Builds a preset and reports everything that fails, not only the first. Configures once; afterwards the build does
# so by itself when a CMake file changes.
build_preset() {
  [[ -f build/$1/build.ninja ]] || cmake --preset "$1" || return
  cmake --build --preset "$1" -- -k 0
}
