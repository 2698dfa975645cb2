#!/usr/bin/env bash
# What ./run does with the programs that are built already: its complaints, a folder in use, its end. (The build and the packages
# have stand-ins.)
#     run_test.sh PROGRAMS        the folder of the built programs
set -uo pipefail
programs=$(cd "$1" && pwd)
cd "$(dirname "$0")/../.."
work=$(mktemp -d)
runner=''
finish() {
    [ -z "$runner" ] || kill -KILL -- "-$runner" 2>/dev/null
    rm -rf "$work"
}
trap finish EXIT
mkdir -p "$work/scripts" "$work/build/release" "$work/bin"
cp run "$work/"
printf 'packages_build=()\ninstall_missing() { :; }\n' >"$work/scripts/packages.sh"
touch "$work/build/release/build.ninja"
ln -s "$programs" "$work/build/release/programs"
printf '#!/bin/sh\n' >"$work/bin/cmake"
chmod +x "$work/bin/cmake"
export PATH=$work/bin:$PATH
unset DISPLAY WAYLAND_DISPLAY
cd "$work"
failures=0

fail() { # LAW, what was seen
    printf 'FAILED: %s\n%s\n' "$1" "$2"
    failures=$((failures + 1))
}
refuses() { # LAW EXPECTED_STATUS FIRST_LINE ARGUMENT...
    local law=$1 status=$2 line=$3 got code
    shift 3
    got=$(./run "$@" 2>&1)
    code=$?
    [ "$code" = "$status" ] && [ "${got%%$'\n'*}" = "$line" ] || fail "$law" "status $code, $got"
}
eventually() { # CONDITION...: within a minute
    local tries
    for tries in $(seq 600); do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}
ctl() { "$programs/nimbryctl/nimbryctl" --dir "$work/weather" "$@" 2>/dev/null; }
answers() { ctl status >/dev/null; }
shows() { grep -q -- "$1" out; }

refuses 'says which option lacks its value' 2 './run: --dir needs a value' --dir
refuses 'says so too when an option follows' 2 './run: --device needs a value' --device --headless
mkdir -p own
printf '[Main]\r\nSerialPort1=/dev/ttyUSB0\r\n' >own/Nimbry.ini
refuses 'keeps invented weather out of a folder with settings of its own' 2 \
    "./run: own has settings of its own: name the station's port with --device" --headless --dir own
[ "$(ls own)" = Nimbry.ini ] || fail 'that folder is as it was' "$(ls own)"
refuses 'says which option it does not know' 2 './run: unknown option --loud' --loud

setsid ./run --headless --dir weather >out 2>&1 &
runner=$!
eventually answers || fail 'a copy answers' "$(cat out)"
shows "^Page: file://$work/weather/web/index.html$" || fail 'says where the page is' "$(cat out)"
refuses 'leaves a folder that a copy works in to it' 3 "./run: Nimbry is running in $work/weather already" --headless --dir weather
answers || fail 'the first copy goes on' "$(cat out)"
eventually shows ' Outdoor Temp. *[+-]' || fail 'the panel shows readings' "$(cat out)"

kill -TERM -- "-$runner"
wait "$runner"
code=$?
[ "$code" = 0 ] || fail 'a signal to the terminal ends it cleanly' "status $code"
eventually eval '! kill -0 -- "-$runner" 2>/dev/null' || fail 'nothing of it is left running' "$(ps -eo pid,pgid,args | grep "$runner")"
runner=''
[ ! -e weather/nimbry.lock ] || fail 'the folder is free again' "$(ls -a weather)"

setsid ./run --headless --dir weather --device /dev/nosuch >out 2>&1 &
runner=$!
eventually shows ' COM Port Error, Please check that the selected port exists (/dev/nosuch)' || fail 'a port that is missing is told' "$(cat out)"
kill -TERM -- "-$runner"
wait "$runner"
runner=''

exit "$failures"
