#!/usr/bin/env bash
# Installs what the project needs from Debian's packages (idempotent, as root on a
# fresh Debian 12), then configures and builds into build/ (or $BUILD_DIR).
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(g++ cmake ninja-build pkg-config libsqlite3-dev sqlite3 libgtest-dev libgmock-dev
          libcli11-dev                    # the command line of iras-yearend
          qt6-base-dev libgl-dev          # the session form, the module, iras-host
          postgresql-15 libpq-dev         # the server the PostgreSQL tests start for themselves; its client
          xvfb xauth fonts-dejavu-core)   # scripts/screenshots.sh only
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ "${#missing[@]}" -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

build_dir="${BUILD_DIR:-build}"
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$build_dir" --parallel 2
