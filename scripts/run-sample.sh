#!/usr/bin/env bash
# The sample run: sets the machine up and builds (scripts/setup.sh), makes a
# fresh sample payroll database in a scratch folder, generates the "All" run of
# the sample employer IR8AYA2025 for basis year 2024 as user ADMIN, lists
# every file it made and checks each with "iras-yearend check" (a rejected
# file fails the script), and says where everything is.
# The scratch folder is out/sample (or $IRAS_SAMPLE_DIR); what an earlier
# sample run left there is replaced.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh

tool="${BUILD_DIR:-build}/iras-yearend"
scratch="${IRAS_SAMPLE_DIR:-$PWD/out/sample}"
database="$scratch/sample.db"
files="$scratch/files"
report="$scratch/report"

# Only what an earlier sample run made is replaced, whatever folder was given.
mkdir -p "$scratch"
rm -rf "$database" "$files" "$report" "$scratch/run.log"

"$tool" init-db "$database" --sample

status=0
"$tool" generate --db "$database" --user ADMIN --employer IR8AYA2025 --year 2024 --type all \
  --out "$files" --report-dir "$report" > "$scratch/run.log" || status=$?
if [ "$status" -ne 0 ]; then
  echo "The sample run ended with exit status $status. The end of its log ($scratch/run.log):" >&2
  tail -n 30 "$scratch/run.log" >&2
  exit "$status"
fi

shopt -s nullglob
made=("$files"/*.txt)
if [ "${#made[@]}" -eq 0 ]; then
  echo "The sample run made no files; see $scratch/run.log" >&2
  exit 7
fi
echo "The sample run made ${#made[@]} return files:"
for file in "${made[@]}"; do echo "  ${file##*/}"; done
echo
echo "Checking them as IRAS would:"
"$tool" check "${made[@]}"

echo
echo "Sample database: $database"
echo "Return files:    $files"
echo "Run log:         $scratch/run.log"
echo "Logs, summary and run folders: $report"
