#!/bin/sh
# 検索した行を数える。don't source it
set -eu

limit=1000
word=${1:-検索}
name='x # y'

usage() {
    echo "usage: $0 WORD [FILE...] # nothing" >&2
    exit 2
}

[ $# -gt 0 ] || usage
shift

total=0
for file in "$@"; do
    if [ ! -r "$file" ]; then
        echo "$file: 読めない" >&2 # "quoted"
        continue
    fi
    case $file in
    *.log) n=$(grep -c -- "$word" "$file" || true) ;;
    *) n=0 ;;
    esac
    total=$((total + n))
    while read -r line; do format "$line"; done <"$file"
done

printf '%s: %d\n' "$word" "$total"
[ "$total" -lt "$limit" ] && exit 0 || exit $?
