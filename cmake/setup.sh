# Shared by the scripts in the root folder: installs missing packages, prints each step and its
# time. Sourced with the root folder as the working folder.

export LC_ALL=C.UTF-8

say() { printf '== %s\n' "$*"; }

# Runs a step and prints its time: step "build" ninja ...
step() {
  local title=$1 began=$SECONDS
  shift
  say "$title"
  "$@" || { say "$title FAILED"; exit 1; }
  say "$title: $((SECONDS - began)) s"
}

# Installs those of the given Debian packages that are missing.
need_packages() {
  local missing=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ "${#missing[@]}" -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { say "missing: ${missing[*]}; install them, or run this as root"; exit 1; }
    as_root=(sudo)
  fi
  say "installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
      "${missing[@]}" >/dev/null || { say "could not install ${missing[*]}"; exit 1; }
}

build_packages=(g++ cmake ninja-build pkg-config guile-3.0-dev libncurses-dev nlohmann-json3-dev)
