#!/usr/bin/env bash
# Takes the README's picture of the verification report
# (docs/verification-report.png) with headless Chromium: on the sample
# database the current IR8A and Appendix 8A returns of IR8AYA2025 for 2024 are
# submitted, then two employees change (one amount up, one down), one is
# added and one removed, and `iras-yearend verify-report` shows what the
# Amendment would tell IRAS. Installs chromium when it is missing (as root).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir="${BUILD_DIR:-build}"

if ! command -v chromium >/dev/null; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends chromium
fi
cmake --build "$build_dir" --parallel 2 --target iras-yearend
mkdir -p docs
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
tool="$build_dir/iras-yearend"
db="$work/payroll.db"
common=(--db "$db" --user ADMIN --employer IR8AYA2025 --year 2024 --report-dir "$work/report")

"$tool" init-db "$db" --sample
# Nur Aisyah binte Rahman (IR8A) and Fong Pei Shan (Appendix 8A) are not in
# the submitted returns: they are the employees added afterwards.
sqlite3 "$db" <<'SQL'
CREATE TABLE KeptIR8A AS SELECT * FROM IR8A WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND PersonalSysId = 1002;
DELETE FROM IR8A WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND PersonalSysId = 1002;
CREATE TABLE KeptA8A AS SELECT * FROM A8A WHERE YEYear = 2024 AND PersonalSysId = 1106;
DELETE FROM A8A WHERE YEYear = 2024 AND PersonalSysId = 1106;
SQL
"$tool" generate "${common[@]}" --type cur-ir8a --out "$work/out" >/dev/null 2>&1
"$tool" generate "${common[@]}" --type a8a --out "$work/out" >/dev/null 2>&1
sqlite3 "$db" <<'SQL'
UPDATE IR8A SET GrossTotal = 61500 WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND PersonalSysId = 1004;
UPDATE IR8A SET EECPFPension = 17320 WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND PersonalSysId = 1006;
INSERT INTO IR8A SELECT * FROM KeptIR8A;
DELETE FROM IR8A WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND PersonalSysId = 1008;
UPDATE A8A SET Education = 3500, TotalBenefitInKind = 5900 WHERE YEYear = 2024 AND PersonalSysId = 1001;
UPDATE A8A SET Clubs = 3000, TotalBenefitInKind = 12850 WHERE YEYear = 2024 AND PersonalSysId = 1006;
INSERT INTO A8A SELECT * FROM KeptA8A;
DELETE FROM A8A WHERE YEYear = 2024 AND PersonalSysId = 1124;
SQL
page="$("$tool" verify-report "${common[@]}" --type all | tail -n 1)"
chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --screenshot=docs/verification-report.png \
  --window-size=1200,1500 "file://$page"
echo "docs/verification-report.png from $page"
