# Starts the release executable with the calendar of the benchmarks, in a folder of its own; for the scripts here.
# Sets: folder, address, server (its process), cookies (the file of the logged-in user), cookie (for a header).

readonly events=20000 user=user000 password=bench today=2004-03-15T10:00:00

for program in build/release/orlune build/bench/make_calendar_file; do
  [[ -x $program ]] || stop "$program is missing; scripts/bench.sh builds it."
done

folder=$(mktemp -d)
server=
cleanup() {
  if [[ $server ]]; then
    kill "$server" || true
    wait "$server" || true
  fi
  rm -rf "$folder"
}
trap cleanup EXIT

start_server() {
  build/bench/make_calendar_file "build/bench/calendars/$events.db" $events
  cp "build/bench/calendars/$events.db" "$folder/calendar.db"
  cp -r site "$folder/site"
  cat >"$folder/orlune.toml" <<END
[server]
listen = "127.0.0.1:0"
site = "site"
secret_file = "secret.key"
connections = 12000
compress = true

[[page]]
path = "/month"
DBPath = "calendar.db"
ShowTitle = true
END
  build/release/orlune serve --config "$folder/orlune.toml" --now $today >"$folder/output" 2>"$folder/log" &
  server=$!
  for ((i = 0; i < 100; ++i)); do
    address=$(sed -n 's|^listening on \(http://.*\)/month$|\1|p' "$folder/output")
    [[ -z $address ]] || return 0
    sleep 0.1
  done
  stop "The server does not start: $(<"$folder/log")"
}

# Logs the user $1 in and prints the cookies for a header.
log_in() {
  curl -sS -o /dev/null -c "$folder/cookies" -d "Name=$1" -d "Passwd=$password" "$address/month?p=l"
  awk '$NF != "" && !/^# / && NF >= 7 { printf "%s=%s; ", $6, $7 }' "$folder/cookies"
}
