#!/usr/bin/env bash
# Requests per second over loopback: the month page, as it is and compressed, compared with a static file of the same size
# from the same server, and the server's memory after many pages. Needs build/release/orlune and build/bench/make_calendar_file, which
# scripts/bench.sh builds. Takes about two minutes.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

readonly rounds=3 seconds=5 connections=8
readonly few_pages=1000 many_pages=100000 clients=4
source bench/server.sh

prepare() {
  start_server
  cookie=$(log_in $user)
  curl -sS -H "Cookie: $cookie" -o "$folder/site/month.html" "$address/month"
  local shown
  shown=$(grep -o 'Shown: ' "$folder/site/month.html" | wc -l)
  ((shown == 60)) || stop "The page shows $shown occurrences instead of 60."
}

# Requests per second for the path $1, with the coding $2, measured by wrk; all responses have to have status 200.
throughput() {
  wrk -t1 -c$connections -d${seconds}s -H "Cookie: $cookie" -H "Accept-Encoding: $2" "$address$1" >"$folder/wrk"
  ! grep -E 'Non-2xx|Socket errors' "$folder/wrk" >&2 || stop "Not every response to wrk was 200."
  awk '/^Requests\/sec:/ { print $2 }' "$folder/wrk"
}

median() {
  sort -n | awk '{ value[NR] = $1 } END { print value[int((NR + 1) / 2)] }'
}

# Requests the page $1 times, over $clients connections.
request_pages() {
  local pids=()
  for ((client = 0; client < clients; ++client)); do
    curl -fsS -o /dev/null -H "Cookie: $cookie" "$address/month?n=[1-$(($1 / clients))]" &
    pids+=($!)
  done
  for pid in "${pids[@]}"; do wait "$pid" || stop "A request for the month page failed."; done
}

resident_kib() {
  awk '/^VmRSS:/ { print $2 }' "/proc/$server/status"
}

prepare
request_pages $few_pages
echo "resident after $few_pages pages: $(resident_kib) KiB"
request_pages $((many_pages - few_pages))
echo "resident after $many_pages pages: $(resident_kib) KiB"

for ((round = 0; round < rounds; ++round)); do
  throughput /month.html identity >>"$folder/files"
  throughput /month identity >>"$folder/pages"
  throughput /month gzip >>"$folder/compressed"
done
files=$(median <"$folder/files")
pages=$(median <"$folder/pages")
compressed=$(median <"$folder/compressed")
echo "bytes: $(stat -c %s "$folder/site/month.html")"
echo "bytes compressed: $(curl -sS -H "Cookie: $cookie" -H 'Accept-Encoding: gzip' "$address/month" | wc -c)"
echo "static files per second: $files"
echo "month pages per second: $pages"
echo "compressed month pages per second: $compressed"
awk -v files="$files" -v pages="$pages" 'BEGIN { printf "month pages to static files: 1 : %.2f\n", files / pages }'
awk -v pages="$pages" -v compressed="$compressed" 'BEGIN { printf "compressed pages to pages: 1 : %.2f\n", pages / compressed }'
