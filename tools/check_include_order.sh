#!/usr/bin/env bash
# Who may include whom in the library:
#   a folder includes itself and the folders before it in this order;
#   an internal/ folder is included from the folder that holds it and from the folders below that.
set -euo pipefail
cd "$(dirname "$0")/.."

order=(common xml math/kernels math/numeric math/matrix/linpack math/matrix math/random math/stats
  model/settings model output math/stats/charts)

# The place of a folder in the order, by the longest name that fits; 0 for the files at the top (export.h).
place() {
  local i best=0 length=0
  for i in "${!order[@]}"; do
    [[ $1/ == "${order[$i]}"/* ]] && ((${#order[$i]} > length)) && best=$((i + 1)) length=${#order[$i]}
  done
  echo "$best"
}

bad=0
refuse() {
  printf '%s\n' "$1" >&2
  bad=1
}
while IFS=: read -r file line include; do
  [ "$file" != nqcommon/nqcommon.h ] || continue
  from=$(dirname "${file#nqcommon/}")
  target=$(sed 's|.*<nqcommon/\(.*\)>.*|\1|' <<<"$include")
  (($(place "$(dirname "$target")") <= $(place "$from"))) ||
    refuse "$file:$line: includes a later folder: $target"
  [[ $target != */internal/* || $from/ == "${target%%/internal/*}"/* ]] ||
    refuse "$file:$line: includes what is internal to another folder: $target"
done < <(git grep -n '#include <nqcommon/' -- nqcommon)
exit $bad
