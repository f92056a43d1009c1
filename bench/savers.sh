#!/usr/bin/env bash
# Many people at once: how many saves a second are acknowledged, compared with single inserts of the sqlite3 shell that
# are as durable, and how fast others get their pages while another process keeps the database locked. Needs
# build/release/orlune and build/bench/make_calendar_file, which scripts/bench.sh builds. Takes about a minute.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source bench/server.sh

readonly rounds=3 seconds=4 inserts=1000

log_in_savers() {
  local number name
  for number in {0..63}; do
    name=$(printf 'user%03d' "$number")
    echo "$name $(log_in "$name")"
  done >"$folder/savers"
}

# $1 people save at once: saves a second and the time within which 99 of 100 are acknowledged, in ms.
save() {
  head -n "$1" "$folder/savers" >"$folder/some"
  wrk -t1 "-c$1" -d${seconds}s --latency -s bench/savers.lua "$address" -- "$folder/some" >"$folder/wrk"
  ! grep -E 'not acknowledged|Socket errors' "$folder/wrk" >&2 || stop "Not every save was acknowledged."
  awk '/99%/ { unit = $2; sub(/[0-9.]+/, "", unit); late = $2 * (unit == "us" ? .001 : unit == "s" ? 1000 : 1) }
       /^Requests\/sec:/ { print $2, late }' "$folder/wrk"
}

# Inserts a second, each committed on its own.
insert() {
  cp "build/bench/calendars/$events.db" "$folder/bare.db"
  {
    echo 'PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;'
    local row="('Lunch', 'user000', 'none', '2004-03-15', '2004-03-15', '12:00', '13:00', 'At the usual place')"
    for ((i = 0; i < inserts; ++i)); do
      echo "INSERT INTO Events (EventName, Owner, Type, BeginDate, EndDate, BeginTime, EndTime, Comments) VALUES $row;"
    done
  } >"$folder/inserts"
  local begin=$EPOCHREALTIME
  sqlite3 "$folder/bare.db" <"$folder/inserts" >"$folder/inserted"
  awk -v begin="$begin" -v end="$EPOCHREALTIME" -v n=$inserts 'BEGIN { print n / (end - begin) }'
}

# The time within which 99 of 100 requests for the path $1 are answered.
late_reply() {
  wrk -t1 -c16 -d1s --latency -H "Cookie: $cookie" "$address$1" | awk '/99%/ { print $2 }'
}

median_of_column() {
  sort -n -k "$1" "$2" | awk -v column="$1" '{ value[NR] = $column } END { print value[int((NR + 1) / 2)] }'
}

# Four people save meanwhile, and wait for the lock.
beside_a_locked_file() {
  cookie=$(log_in $user)
  curl -sS -H "Cookie: $cookie" -o "$folder/site/month.html" "$address/month"
  for path in /month /month.html /healthz; do echo "$path: 99 % within $(late_reply $path)"; done
  mkfifo "$folder/lock"
  sqlite3 "$folder/calendar.db" <"$folder/lock" >"$folder/locked" &
  exec 3>"$folder/lock"
  echo 'BEGIN IMMEDIATE; SELECT 1;' >&3
  while [[ ! -s $folder/locked ]]; do sleep 0.05; done
  local saving=() name cookies
  while read -r name cookies; do
    curl -sS -o /dev/null -w "save: %{http_code} after %{time_total} s\n" -H "Cookie: $cookies" \
      -d "title=Lunch&reptype=none&date1=3/15/2004&calendar=$name" "$address/month?p=e&act=save" 3>&- &
    saving+=($!)
  done < <(head -n 4 "$folder/savers")
  for path in /month /month.html /healthz; do echo "$path, locked: 99 % within $(late_reply $path)"; done
  sleep 4
  exec 3>&-
  wait "${saving[@]}"
}

start_server
log_in_savers
beside_a_locked_file
for ((round = 0; round < rounds; ++round)); do
  insert >>"$folder/bare"
  save 8 >>"$folder/saves8"
  save 64 >>"$folder/saves64"
done
bare=$(median_of_column 1 "$folder/bare")
echo "bare inserts per second: $bare"
for people in 8 64; do
  awk -v people=$people -v bare="$bare" -v rate="$(median_of_column 1 "$folder/saves$people")" \
    -v late="$(median_of_column 2 "$folder/saves$people")" \
    'BEGIN { printf "%d people: %d saves per second, %.2f of bare inserts; 99 %% within %.1f ms\n", people, rate, rate / bare, late }'
done
