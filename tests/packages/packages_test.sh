#!/usr/bin/env bash
# The two Debian packages in a clean system: installed, run as the service runs, removed, purged.
#
# usage: packages_test.sh FOLDER, which holds the .deb files. Needs root, debootstrap and a Debian mirror. A second run takes the
# clean system from FOLDER/bookworm.tar; remove that to fetch it anew.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
source_folder=$tests/../..
debs=$(cd "$1" && pwd)
mirror=${NIMBRY_DEBIAN_MIRROR:-http://deb.debian.org/debian}

[ "$(id -u)" -eq 0 ] || { echo 'packages_test.sh: only root can set up the clean system' >&2; exit 2; }
# Mounts and processes of a namespace end with it, whatever happens.
if [ -z "${NIMBRY_IN_NAMESPACE:-}" ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    NIMBRY_IN_NAMESPACE=$work unshare --mount --pid --fork --kill-child "$0" "$debs"
    exit
fi
root=$NIMBRY_IN_NAMESPACE/root
failures=0

step() { printf -- '--- %s (%s)\n' "$1" "$(date +%H:%M:%S)"; }
fail() { # LAW, what was seen
    printf 'FAILED: %s\n%s\n' "$1" "${2:-}"
    failures=$((failures + 1))
}
holds() { # LAW CONDITION...
    local law=$1 seen
    shift
    seen=$("$@" 2>&1) || fail "$law" "$seen"
}
eventually() { # CONDITION...: within a minute
    local tries
    for ((tries = 0; tries < 300; ++tries)); do
        "$@" >/dev/null 2>&1 && return 0
        sleep 0.2
    done
    "$@"
}
# Each of these becomes the program it runs, so that a process in the background has the program's own number.
enter=(chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive)
as_service=("${enter[@]}" setpriv --reuid=nimbry --regid=nimbry --init-groups)
in_root() { "${enter[@]}" "$@"; }
quietly() { # COMMAND...: its output only if it fails
    local output
    output=$("$@" 2>&1) || { printf '%s\n' "$output"; return 1; }
}

step 'a clean system'
if [ ! -f "$debs/bookworm.tar" ]; then
    quietly debootstrap --variant=minbase bookworm "$NIMBRY_IN_NAMESPACE/clean" "$mirror"
    tar -C "$NIMBRY_IN_NAMESPACE/clean" -cf "$debs/bookworm.tar.new" .
    mv "$debs/bookworm.tar.new" "$debs/bookworm.tar"
    rm -rf "$NIMBRY_IN_NAMESPACE/clean"
fi
mkdir "$root"
tar -C "$root" -xf "$debs/bookworm.tar"
mount -t proc proc "$root/proc"
mount -t devpts -o newinstance,ptmxmode=0666,mode=0620,gid=5 devpts "$root/dev/pts"
ln -sf pts/ptmx "$root/dev/ptmx"
cp /etc/resolv.conf "$root/etc/resolv.conf"
cp "$debs"/nimbry*.deb "$root/root/"
nimbry=$(cd "$root/root" && ls nimbry_*.deb)
nimbryd=$(cd "$root/root" && ls nimbryd_*.deb)

step 'what they depend on'
quietly in_root apt-get update
depends() { dpkg-deb -f "$debs/$1" Depends; }
quietly in_root apt-get satisfy -y --no-install-recommends "$(depends "$nimbry"), $(depends "$nimbryd")"
for library in libqt6core6 libqt6serialport6 libcurl4 libboost-context1.74.0; do
    holds "nimbryd depends on $library" grep -qw "$library" <<<"$(depends "$nimbryd")"
done
holds 'nimbry depends on the window system' grep -qw libqt6widgets6 <<<"$(depends "$nimbry")"
holds 'nimbry depends on the sounds' grep -qw libcanberra0 <<<"$(depends "$nimbry")"
for windows in libqt6widgets6 libcanberra0; do
    ! grep -qw "$windows" <<<"$(depends "$nimbryd")" || fail "nimbryd needs no $windows"
done

# Everything that a package can leave behind: names below the places that it may write, and who there is.
inventory() {
    find "$root" -xdev \( -path "$root/proc" -o -path "$root/dev" -o -path "$root/run" -o -path "$root/tmp" -o -path "$root/root" \
        -o -path "$root/var/cache" -o -path "$root/var/lib/dpkg" -o -path "$root/var/lib/apt" -o -path "$root/var/log" \) -prune \
        -o -printf '/%P\n' | grep -vE '^/etc/(passwd|shadow|group|gshadow)-$' | sort
    cut -d: -f1 "$root/etc/passwd" "$root/etc/group" | sort | sed 's/^/account /'
}
inventory >"$NIMBRY_IN_NAMESPACE/before"

step 'installed, as the manual says'
# The manual's own lines, without "sudo": whoever is here is root.
mapfile -t lines < <(sed -n '/^```sh/,/^```/s/^sudo \(apt install .*\)/\1/p' "$source_folder/docs/install.md")
[ ${#lines[@]} -ge 2 ] || fail 'the manual tells how each package is installed' "${lines[*]}"
for line in "${lines[@]}"; do
    quietly in_root sh -c "cd /root && $line -y --no-install-recommends" || fail 'a line of the manual installs' "$line"
done
for package in nimbry nimbryd; do
    holds "$package is installed" [ "$(in_root dpkg-query -W -f='${db:Status-Status}' $package)" = installed ]
done
account=$(in_root id nimbry)
grep -q '(dialout)' <<<"$account" || fail 'the user of the service may open serial ports' "$account"
holds 'its folder is closed to others' [ "$(in_root stat -c '%U:%G %a' /var/lib/nimbry)" = 'nimbry:nimbry 750' ]
holds 'the service waits to be switched on' [ ! -e "$root/etc/systemd/system/multi-user.target.wants/nimbryd.service" ]
holds 'it can be switched on' systemctl --root="$root" enable nimbryd.service
for program in nimbry nimbryd nimbryctl nimbry-station; do
    in_root env QT_QPA_PLATFORM=offscreen "$program" --version | grep -q "^$program [0-9]" || fail "$program tells its version"
    [ -f "$root/usr/share/man/man1/$program.1.gz" ] || fail "$program has a manual page"
    [ -f "$root/usr/share/bash-completion/completions/$program" ] || fail "$program has its completion"
done

step 'the service decodes weather'
command=$(sed -n 's/^ExecStart=//p' "$root/usr/lib/systemd/system/nimbryd.service")
printf '[Main]\r\nSerialPort1=/tmp/station\r\n' >"$root/var/lib/nimbry/Nimbry.ini"
in_root chown nimbry:nimbry /var/lib/nimbry/Nimbry.ini
"${as_service[@]}" nimbry-station --link /tmp/station >"$NIMBRY_IN_NAMESPACE/station.out" 2>&1 &
station=$!
eventually test -e "$root/tmp/station" || true
"${as_service[@]}" $command >"$NIMBRY_IN_NAMESPACE/service.out" 2>&1 &
service=$!
ctl() { in_root nimbryctl --dir /var/lib/nimbry "$@"; }
shows_temperature() { ctl boxes 'Text2(0)' | grep -qP '\t[+-]?[0-9.]+ °C$'; }
eventually shows_temperature || fail 'nimbryctl shows the decoded weather' "$(cat "$NIMBRY_IN_NAMESPACE"/*.out; ctl status)"
holds 'the settings are readable by their owner alone' [ "$(in_root stat -c '%U %a' /var/lib/nimbry/Nimbry.ini)" = 'nimbry 600' ]
holds 'nimbryctl draws a picture' ctl graph temperature --png /tmp/graph.png
holds 'nimbryctl stops it' ctl stop
wait "$service" && code=0 || code=$?
[ "$code" -eq 0 ] || fail 'the service ends with 0 when it is told to' "status $code"
[ -f "$root/var/lib/nimbry/nbyprog.log" ] || fail 'the service keeps its program log'

step 'the window runs on the same station'
"${enter[@]}" env QT_QPA_PLATFORM=offscreen nimbry --dir /tmp/window --device /tmp/station >"$NIMBRY_IN_NAMESPACE/window.out" 2>&1 &
window=$!
eventually in_root nimbryctl --dir /tmp/window status || fail 'nimbry answers' "$(cat "$NIMBRY_IN_NAMESPACE/window.out")"
kill "$window"
wait "$window" && code=0 || code=$?
[ "$code" -eq 0 ] || fail 'nimbry ends with 0 when it is told to' "status $code"
kill "$station"
wait "$station" || true

step 'removed, installed again, purged'
touch "$root/var/lib/nimbry/nbextreme.log"
quietly in_root apt-get remove -y nimbryd
holds 'removing keeps the settings' [ -f "$root/var/lib/nimbry/Nimbry.ini" ]
quietly in_root sh -c "cd /root && apt-get install -y --no-install-recommends ./$nimbryd"
quietly in_root apt-get purge -y nimbry nimbryd
inventory >"$NIMBRY_IN_NAMESPACE/records"
left=$(comm -13 "$NIMBRY_IN_NAMESPACE/before" "$NIMBRY_IN_NAMESPACE/records" | grep -v '^/var/lib/nimbry/\(grafdata.dat\|nbextreme.log\|nimbr[TY]Day.log\)$' || true)
expected=$'/var/lib/nimbry\naccount nimbry\naccount nimbry'
[ "$left" = "$expected" ] || fail 'purging leaves the weather records, the user that they belong to, and nothing else' "$left"
holds 'the records are there' [ -f "$root/var/lib/nimbry/nbextreme.log" ]

# Whoever wants no records either.
rm -r "$root/var/lib/nimbry"
quietly in_root sh -c "cd /root && apt-get install -y --no-install-recommends ./$nimbryd"
quietly in_root apt-get purge -y nimbryd
inventory >"$NIMBRY_IN_NAMESPACE/after"
left=$(comm -3 "$NIMBRY_IN_NAMESPACE/before" "$NIMBRY_IN_NAMESPACE/after")
[ -z "$left" ] || fail 'purging a service without records leaves nothing' "$left"

[ "$failures" -eq 0 ] && echo 'The packages install, run and go.'
exit "$failures"
