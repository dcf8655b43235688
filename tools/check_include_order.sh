#!/usr/bin/env bash
# A folder of the library includes only folders before it in this order, and itself.
set -euo pipefail
cd "$(dirname "$0")/.."

order=(common xml math/numeric math/matrix math/random model output math/stats)

# The place of a folder in the order; 0 for the files at the top (export.h).
place() {
  local i
  for i in "${!order[@]}"; do
    [[ $1/ == "${order[$i]}"/* ]] && { echo $((i + 1)); return; }
  done
  echo 0
}

bad=0
while IFS=: read -r file line include; do
  [ "$file" != nqcommon/nqcommon.h ] || continue
  from=$(place "$(dirname "${file#nqcommon/}")")
  to=$(place "$(dirname "$(sed 's|.*<nqcommon/\(.*\)>.*|\1|' <<<"$include")")")
  if ((to > from)); then
    printf '%s:%s: includes a later folder: %s\n' "$file" "$line" "$include" >&2
    bad=1
  fi
done < <(git grep -n '#include <nqcommon/' -- nqcommon)
exit $bad
