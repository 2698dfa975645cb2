#!/usr/bin/env bash
# What scripts/packages.sh does on a machine where packages are missing, with stand-ins for the system's own programs.
set -uo pipefail
cd "$(dirname "$0")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin"
failures=0

stand_in() { # NAME, its script on standard input
    { echo '#!/bin/bash'; cat; } >"$work/bin/$1"
    chmod +x "$work/bin/$1"
}
stand_in dpkg-query <<'END'
grep -qx "${@: -1}" "$STATE/installed" && echo -n installed
END
stand_in apt-get <<'END'
echo "apt-get $*" >>"$STATE/done"
[ "$1" = update ] || exit "${APT_STATUS:-0}"
END
stand_in sudo <<'END'
echo sudo >>"$STATE/done"
exec "$@"
END
stand_in id <<'END'
echo "${USER_NUMBER:-0}"
END

check() { # LAW EXPECTED_STATUS EXPECTED_OUTPUT EXPECTED_DEEDS, [VARIABLE=VALUE...] -- PACKAGE...
    local law=$1 status=$2 output=$3 deeds=$4
    shift 4
    local settings=()
    while [ "$1" != -- ]; do settings+=("$1"); shift; done
    shift
    : >"$work/done"
    local got code
    got=$(env STATE="$work" PATH="$work/bin:$PATH" "${settings[@]}" bash -c '. scripts/packages.sh; install_missing "$@"' _ "$@" 2>&1)
    code=$?
    if [ "$code" != "$status" ] || [ "$got" != "$output" ] || [ "$(cat "$work/done")" != "$deeds" ]; then
        printf 'FAILED: %s\nstatus %s\noutput %s\ndeeds %s\n' "$law" "$code" "$got" "$(cat "$work/done")"
        failures=$((failures + 1))
    fi
}

printf '%s\n' one two >"$work/installed"
check 'does nothing and says nothing where all is there' 0 '' '' -- one two
check 'installs only what is missing, and says what' 0 'Installing: three four' \
    $'apt-get update -qq\napt-get install -y -qq --no-install-recommends three four' -- one three two four
check 'asks for rights when it has none' 0 'Installing: three' \
    $'sudo\napt-get update -qq\nsudo\napt-get install -y -qq --no-install-recommends three' USER_NUMBER=1000 -- three
check 'fails where a package cannot be had' 100 'Installing: three' \
    $'apt-get update -qq\napt-get install -y -qq --no-install-recommends three' APT_STATUS=100 -- three

exit "$failures"
