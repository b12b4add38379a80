#!/usr/bin/env bash
# Puts the tables of records, made from the table of all effects, into docs/host-guide.md.
#   scripts/guide_records.sh BUILD          writes them
#   scripts/guide_records.sh BUILD --check  fails where the guide has others
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tables=${1:?the build folder is missing}/tools/zq_record_tables
guide=docs/host-guide.md
new=$(mktemp)
trap 'rm -f "$new"' EXIT

for mark in '<!-- records -->' '<!-- end of records -->'; do
    if (($(grep -cFx "$mark" "$guide") != 1)); then
        echo "guide_records: $guide needs one line '$mark'" >&2
        exit 1
    fi
done
{
    sed '/^<!-- records -->$/q' "$guide"
    "$tables"
    echo
    sed -n '/^<!-- end of records -->$/,$p' "$guide"
} >"$new"

if [[ ${2:-} != --check ]]; then
    cat "$new" >"$guide"
elif ! diff -u "$guide" "$new"; then
    echo "guide_records: the tables in $guide differ; run scripts/guide_records.sh $1" >&2
    exit 1
fi
