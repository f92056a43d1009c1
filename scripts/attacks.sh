#!/usr/bin/env bash
# Attacks a strict demo on the loopback address, and says for each attack "held" or what was found.
# Usage: scripts/attacks.sh [NAME...]
#   requests   requests of foreign pages, of other users and of strangers
#   crowds     half, slow and silent connections, many of them, a log that nobody reads
#   kills      of the server while people save, KILLS times (100)
#   mutated    MUTATIONS changed requests (200,000; 10,000,000 before a release), beginning with SEED
#   fuzz       FUZZ_INPUTS changed dates, statements and requests (2,000,000 each), without a server
#   sqlmap     at most MINUTES (10)
#   wapiti     at most MINUTES (10)
# Without names: all. ORLUNE_EXE is attacked instead of the executable of the asan preset, which is built otherwise.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

(($#)) || set -- requests crowds kills mutated fuzz sqlmap wapiti
require_packages "${build_packages[@]}" python3:python3
if [[ -z ${ORLUNE_EXE:-} || " $* " == *" fuzz "* ]]; then
  build_preset asan || stop "The build failed."
fi
export ORLUNE_EXE=${ORLUNE_EXE:-$PWD/build/asan/orlune} PYTHONDONTWRITEBYTECODE=1

fuzz() {
  local target
  for target in date_fuzz dialect_fuzz request_fuzz; do
    "build/asan/$target" "${FUZZ_INPUTS:-2000000}" "tests/fuzz/seeds/$target" || return
  done
}

found=()
for name; do
  echo "== $name"
  case $name in
    requests) python3 attacks/foreign_requests.py ;;
    crowds) python3 attacks/crowds.py ;;
    kills) python3 attacks/kills.py "${KILLS:-100}" ;;
    mutated) python3 attacks/mutated.py "${MUTATIONS:-200000}" "${SEED:-1}" ;;
    fuzz) fuzz ;;
    sqlmap | wapiti)
      require_packages "$name:$name"
      python3 attacks/scanners.py "$name" "${MINUTES:-10}"
      ;;
    *) stop "No attack has the name $name." ;;
  esac || found+=("$name")
done
((${#found[@]} == 0)) || stop "Found something: ${found[*]}"
echo "All attacks were held."
