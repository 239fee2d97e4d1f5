# Builds from Debian's source packages into the cache, in stages that a restart doesn't repeat. Sourced,
# never run. `title` names what is built, `target` is its folder, `work` where it is built.

say() { echo "$title: $*" >&2; }

# A complete folder has this file, which says where its content comes from.
is_complete() { [ -e "$target/.complete" ]; }

# Locks the folder until this run ends, and refuses one that something else made.
claim_target() {
  mkdir -p "$(dirname "$target")"
  exec 9>"$target.lock"
  flock -n 9 || { say "waiting for another run that is at '$target'"; flock 9; }
  if ! is_complete && [ -e "$target" ] && [ -n "$(ls -A "$target")" ]; then
    say "'$target' holds something else. Remove it, or name another folder."
    exit 1
  fi
}

# Renames a finished folder to the target, so that no other run sees half of it.
put_in_place() {
  local finished=$1 origin=$2
  staging=${staging:-$(mktemp -d "$target.XXXXXX")}
  trap 'rm -rf "$staging"' EXIT
  [ "$finished" = "$staging/content" ] || mv "$finished" "$staging/content"
  echo "$origin" >"$staging/content/.complete"
  rm -rf "$target"
  mv "$staging/content" "$target"
}

# Runs one stage unless it is done. Output goes to a file; a line each minute shows progress.
stage() {
  local name=$1
  shift
  [ ! -e "$work/$name.done" ] || return 0
  local log="$work/$name.log" began=$SECONDS
  say "$name, log in $log"
  # Its own process group can be ended as a whole; it doesn't inherit the lock.
  set -m
  "$@" >"$log" 2>&1 9>&- &
  local job=$! ticks=0
  set +m
  # shellcheck disable=SC2064
  trap "kill -- -$job 2>/dev/null; exit 130" INT
  # shellcheck disable=SC2064
  trap "kill -- -$job 2>/dev/null; exit 143" TERM
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

# Gets sources through apt with lists of its own, which leaves the machine's lists alone.
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

# The description of a source package's newest version that has been fetched.
description_of() {
  find "$work" -maxdepth 1 -name "$1_*.dsc" | sort -V | tail -n 1
}

# Unpacks a source package with debian/patches applied. apt resumes a download that broke off.
fetch_source() {
  local package=$1
  cd "$work"
  rm -rf "${work:?}/$package"
  apt-get "${apt_options[@]}" -q update
  apt-get "${apt_options[@]}" -q source --download-only "$package"
  dpkg-source --extract "$(description_of "$package")" "$work/$package"
}
