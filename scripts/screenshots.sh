#!/usr/bin/env bash
# Takes the README's pictures of the session form (docs/*.png) on a virtual X
# display (Xvfb) with Qt's real xcb platform: generation mode, direct
# submission, and the log page after a run on the sample database.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir="${BUILD_DIR:-build}"
cmake --build "$build_dir" --parallel 2 --target iras-yearend iras-form-screenshots
mkdir -p docs
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$build_dir/iras-yearend" init-db "$work/payroll.db" --sample
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x1000x24 -dpi 96" \
  "$build_dir/iras-form-screenshots" "$work/payroll.db" "$work" docs
