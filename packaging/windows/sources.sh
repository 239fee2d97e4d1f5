# Building from Debian's source packages, in stages that aren't repeated; sourced, never run. `title`
# names what is built, `work` where.

say() { echo "$title: $*" >&2; }

# Runs one stage unless it is done. Its output goes to a file; a line a minute tells how far it is.
stage() {
  local name=$1
  shift
  [ ! -e "$work/$name.done" ] || return 0
  local log="$work/$name.log" began=$SECONDS
  say "$name, log in $log"
  "$@" >"$log" 2>&1 &
  local job=$! ticks=0
  # What runs in the background doesn't hear of Ctrl-C.
  # shellcheck disable=SC2064
  trap "kill $job 2>/dev/null; exit 130" INT TERM
  while kill -0 "$job" 2>/dev/null; do
    sleep 1
    ticks=$((ticks + 1))
    [ $((ticks % 60)) -ne 0 ] || say "$name: $((ticks / 60)) minutes, $(wc -l <"$log") lines of log"
  done
  if ! wait "$job"; then
    tail -n 20 "$log" >&2
    say "'$name' failed, see $log. Started again, it goes on from here."
    exit 1
  fi
  trap - INT TERM
  say "$name done in $(((SECONDS - began) / 60)) minutes"
  touch "$work/$name.done"
}

# Makes the folder for the work and keeps a second build out of it.
enter_work() {
  mkdir -p "$work"
  exec 9>"$work/lock"
  flock -n 9 || { say "another build is under way in $work."; exit 1; }
}

# Sources come through apt with lists of its own, so that the machine's stay as they are.
apt_options=()
prepare_apt() {
  local apt="$work/apt" keyring=/usr/share/keyrings/debian-archive-keyring.gpg
  mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial"
  printf 'deb-src [signed-by=%s] http://deb.debian.org/%s main\n' \
    "$keyring" "debian bookworm" "$keyring" "debian bookworm-updates" \
    "$keyring" "debian-security bookworm-security" >"$apt/sources.list"
  apt_options=(-o "Dir::Etc::SourceList=$apt/sources.list" -o Dir::Etc::SourceParts=-
    -o "Dir::State::Lists=$apt/lists" -o "Dir::Cache=$apt/cache" -o APT::Sandbox::User=root)
}

# Unpacks a source package with debian/patches applied. apt goes on with a download that broke off.
fetch_source() {
  local package=$1
  cd "$work"
  rm -rf "${work:?}/$package"
  apt-get "${apt_options[@]}" -q update
  apt-get "${apt_options[@]}" -q source --download-only "$package"
  dpkg-source --extract "$package"_*.dsc "$work/$package"
}
