#!/bin/bash
# Rips one ten-minute image with Tonelift and, by turns, with the command-line tools a user would take instead, at
# the same encoder quality: track by track, and all tracks first, then encoded two at a time. Prints the best of each
# side's runs and the ratios, below 1 where Tonelift is better.
# bench/peers.sh [RUNS]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. tools/steps.sh
runs=${1:-3}

install build run bench
configure release
build release "the benchmark" bench_rip

folder=$PWD/build/bench
image=$folder/discs/bench.cue
tools=$folder/tools
log=$folder/runs.txt
mkdir -p "$tools"
build/release/bench/bench_rip "$folder" start >/dev/null # makes the image

# The read and the encoding of one track; paranoia's messages about image drives would hide all else.
read_track() { cd-paranoia -q -d "$image" -p "$1" - 2>/dev/null; }
rip_wav() { cd-paranoia -q -B -d "$image" >/dev/null 2>&1; }
rip_mp3() { read_track "$1" | lame --quiet -r -s 44.1 -m s --cbr -b 128 -q 5 - "$1.mp3"; }
rip_ogg() { read_track "$1" | oggenc -Q -r -b 128 -o "$1.ogg" -; }
rip_wma() {
    read_track "$1" | ffmpeg -v error -y -f s16le -ar 44100 -ac 2 -i - -c:a wmav2 -b:a 128k "$1.wma"
}

rip_all() {
    local track
    rm -f ./*."$1"
    if [ "$1" = wav ]; then
        rip_wav
    else
        for track in {1..10}; do "rip_$1" "$track"; done
    fi
    [ "$(find . -name "*.$1" | wc -l)" = 10 ] || fail "the tools made no ten $1 files"
}

encode_mp3() { xargs -P 2 -I % lame --quiet -m s --cbr -b 128 -q 5 % %.mp3; }
encode_ogg() { xargs -P 2 -I % oggenc -Q -b 128 -o %.ogg %; }

rip_then_encode() {
    rm -f ./*.wav ./*."$1"
    rip_wav
    find . -name '*.wav' | "encode_$1"
    [ "$(find . -name "*.$1" | wc -l)" = 10 ] || fail "two encoders at a time made no ten $1 files"
}

# run_tools FORMAT FUNCTION SIDE: "<side> <format> <seconds> <processor seconds>", as the lines of Tonelift's benchmark.
run_tools() {
    local times TIMEFORMAT='%R %U %S'
    times=$(cd "$tools" && { time "$2" "$1" >&2; } 2>&1 | tail -n 1)
    awk -v side="$3" -v format="$1" '{ printf "%s\t%s\t%s\t%s\n", side, format, $1, $2 + $3 }' <<<"$times"
}

run_tonelift() {
    build/release/bench/bench_rip "$folder" "$1" |
        awk -F '\t' '{ printf "tonelift\t%s\t%s\t%s\t%s\t%s\n", $1, $2, $4, $5, $6 }'
}

: >"$log"
for ((run = 0; run < runs; ++run)); do
    for format in wav mp3 ogg wma; do
        run_tools "$format" rip_all tools >>"$log"
        case $format in mp3 | ogg) run_tools "$format" rip_then_encode two >>"$log" ;; esac
        run_tonelift "$format" >>"$log"
    done
done

build/release/bench/bench_rip "$folder" start | awk '{ print "start to shown window: " $2 " ms" }'
awk -F '\t' '
    function least(array, key, value) { if (!(key in array) || value < array[key]) array[key] = value }
    function most(array, key, value) { if (value > array[key]) array[key] = value }
    { least(wall, $1 $2, $3); least(cpu, $1 $2, $4) }
    $1 == "tonelift" { most(memory, $2, $5); most(gap, $2, $6) }
    END {
        line = "%-6s %10s %10s %7s %11s %7s %10s %10s %7s %8s %8s\n"
        printf line, "", "tools s", "tonelift s", "ratio", "two at once", "ratio", "tools cpu", "tonelift", "ratio",
            "peak MB", "gap ms"
        count = split("wav mp3 ogg wma", formats, " ")
        for (i = 1; i <= count; ++i) {
            f = formats[i]
            two = ("two" f) in wall ? wall["two" f] : ""
            printf line, f, wall["tools" f], wall["tonelift" f],
                sprintf("%.2f", wall["tonelift" f] / wall["tools" f]), two,
                two ? sprintf("%.2f", wall["tonelift" f] / two) : "",
                cpu["tools" f], cpu["tonelift" f],
                sprintf("%.2f", cpu["tonelift" f] / cpu["tools" f]), memory[f], gap[f]
        }
    }' "$log"
