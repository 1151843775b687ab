#!/bin/sh
# run.sh PROGRAM CORPUS FOLDER [--seconds N]: lets a fuzzer go through its kept corpus and then search
# for N seconds (15). Finds go to FOLDER/artifacts; PROGRAM FILE replays one. The seed is
# QRB_SEED or a random one. The line of figures goes to QRB_FIGURES, where the environment names it.
set -eu
program=$1
corpus=$2
folder=$3
name=$(basename "$program")
seed=${QRB_SEED:-$(od -An -N4 -tu4 /dev/urandom | tr -d ' ')}
seed=$((seed % 4294967295))
seconds=${5:-15}
found=$folder/found/$name
log=$folder/$name.log
mkdir -p "$folder/artifacts" "$found"
limits="-rss_limit_mb=2048 -malloc_limit_mb=1024 -timeout=30"
echo "$name: seed $seed"

begin=$(date +%s)
bad=0
# The kept corpus one by one, so that each that fails is told.
tried=0
for file in "$corpus"/*; do
    [ -e "$file" ] || continue
    tried=$((tried + 1))
    # shellcheck disable=SC2086
    if ! "$program" $limits -artifact_prefix="$folder/artifacts/$name-" "$file" >"$log" 2>&1; then
        bad=$((bad + 1))
        cat "$log"
        echo "BAD: $file"
        echo "     replay: $program $file"
    fi
done
# shellcheck disable=SC2086
if ! "$program" $limits -seed="$seed" -max_total_time="$seconds" -print_final_stats=1 -max_len=300000 \
    -artifact_prefix="$folder/artifacts/$name-" "$found" "$corpus" >"$log" 2>&1; then
    bad=$((bad + 1))
    tail -n 100 "$log"
    file=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
    echo "BAD: ${file:-see $log}"
    echo "     replay: $program ${file:-}"
fi
searched=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
tried=$((tried + ${searched:-0}))
line="$name: $tried inputs, $bad bad, $(($(date +%s) - begin)) s, seed $seed"
echo "$line"
[ -z "${QRB_FIGURES:-}" ] || echo "$line" >"$QRB_FIGURES/$name.txt"
[ "$bad" -eq 0 ] && [ "$tried" -gt 0 ]
