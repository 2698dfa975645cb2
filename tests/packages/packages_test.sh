#!/usr/bin/env bash
# The two Debian packages in a clean system that is started with its own systemd: installed, set up, run, removed and purged, by the
# commands of the manual as they stand there.
#
# usage: packages_test.sh FOLDER, which holds the .deb files. Needs root, debootstrap, systemd-nspawn and a Debian mirror. A second run
# takes the clean system from FOLDER/bookworm.tar; remove that to fetch it anew.
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
    NIMBRY_IN_NAMESPACE=$work unshare --mount --pid --mount-proc --fork --kill-child "$0" "$debs"
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
cp /etc/resolv.conf "$root/etc/resolv.conf"
echo localhost >"$root/etc/hostname"
# Nobody is here to be asked.
printf 'APT::Get::Assume-Yes "true";\nAPT::Install-Recommends "false";\n' >"$root/etc/apt/apt.conf.d/90nobody-asked"
quietly chroot "$root" apt-get update
# What every machine with a station has.
DEBIAN_FRONTEND=noninteractive quietly chroot "$root" apt-get install systemd-sysv udev dbus sudo psmisc

step 'started'
systemd-nspawn --quiet --directory="$root" --register=no --keep-unit --resolv-conf=off --boot </dev/null >"$NIMBRY_IN_NAMESPACE/boot.out" 2>&1 &
container=$!
leader() { first=$(pgrep --parent "$container"); }
eventually leader
# A process in the background ends as the program does that it waits for.
enter=(nsenter --target "$first" --mount --uts --ipc --net --pid --cgroup --root --wdns=/root
    /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root USER=visitor LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive)
as_service=("${enter[@]}" setpriv --reuid=nimbry --regid=nimbry --init-groups)
in_root() { "${enter[@]}" "$@"; }
is_up() { in_root systemctl is-system-running | grep -qE '^(running|degraded)$'; }
eventually is_up || { cat "$NIMBRY_IN_NAMESPACE/boot.out"; exit 1; }

# The manual's pages as they stand: each command that needs root is run here, as the page has it.
declare -A ran
page() { # COMMAND OF A PAGE...
    local line
    for line; do
        ran[$line]=yes
        grep -qxF -e "$line" -e "\$ $line" "$source_folder"/docs/*.md || fail 'the manual has this command' "$line"
        holds "a command of the manual works: $line" in_root bash -c "$line"
    done
}

step 'what they depend on'
cp "$debs"/nimbry*.deb "$root/root/"
nimbry=$(cd "$root/root" && ls nimbry_*.deb)
nimbryd=$(cd "$root/root" && ls nimbryd_*.deb)
depends() { dpkg-deb -f "$debs/$1" Depends; }
quietly in_root apt-get satisfy "$(depends "$nimbry"), $(depends "$nimbryd")"
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
        -o -path "$root/var/cache" -o -path "$root/var/lib/dpkg" -o -path "$root/var/lib/apt" -o -path "$root/var/lib/systemd" \
        -o -path "$root/var/log" -o -path "$root/var/tmp" \) -prune \
        -o -printf '/%P\n' | grep -vE '^/etc/(passwd|shadow|group|gshadow|subuid|subgid)-$' | sort
    cut -d: -f1 "$root/etc/passwd" "$root/etc/group" | sort | sed 's/^/account /'
}
inventory >"$NIMBRY_IN_NAMESPACE/before"

step 'installed, as the manual says'
page 'sudo apt install ./nimbry_*.deb' 'sudo apt install ./nimbryd_*.deb'
for package in nimbry nimbryd; do
    holds "$package is installed" [ "$(in_root dpkg-query -W -f='${db:Status-Status}' $package)" = installed ]
done
account=$(in_root id nimbry)
grep -q '(dialout)' <<<"$account" || fail 'the user of the service may open serial ports' "$account"
holds 'its folder is closed to others' [ "$(in_root stat -c '%U:%G %a' /var/lib/nimbry)" = 'nimbry:nimbry 750' ]
holds 'the service waits to be switched on' [ "$(in_root systemctl is-enabled nimbryd; in_root systemctl is-active nimbryd)" = $'disabled\ninactive' ]
in_root useradd visitor
page 'sudo adduser "$USER" dialout'
account=$(in_root id visitor)
grep -q '(dialout)' <<<"$account" || fail 'whoever reads the manual may open serial ports' "$account"
for program in nimbry nimbryd nimbryctl nimbry-station; do
    in_root env QT_QPA_PLATFORM=offscreen "$program" --version | grep -q "^$program [0-9]" || fail "$program tells its version"
    [ -f "$root/usr/share/man/man1/$program.1.gz" ] || fail "$program has a manual page"
    [ -f "$root/usr/share/bash-completion/completions/$program" ] || fail "$program has its completion"
done

step 'the service decodes weather, set up as the manual says'
in_root install -d -o nimbry /run/station
"${as_service[@]}" nimbry-station --link /run/station/line >"$NIMBRY_IN_NAMESPACE/station.out" 2>&1 &
station=$!
eventually in_root test -h /run/station/line || fail 'the station plays' "$(cat "$NIMBRY_IN_NAMESPACE/station.out")"
in_root ln -s /run/station/line /dev/ttyUSB0
ctl() { in_root nimbryctl --dir /var/lib/nimbry "$@"; }
service() { in_root systemctl show --value --property="$1" nimbryd; }
journal() { in_root journalctl --no-pager --unit nimbryd; }
page 'sudo systemctl enable --now nimbryd'
holds 'it is switched on' [ "$(in_root systemctl is-enabled nimbryd)" = enabled ]
eventually ctl status || fail 'the service answers' "$(journal)"
mapfile -t commands < <(grep '^sudo nimbryctl ' "$source_folder/docs/service.md")
page "${commands[@]}"
shows_temperature() { ctl boxes 'Text2(0)' | grep -qP '\t[+-]?[0-9.]+ °C$'; }
eventually shows_temperature || fail 'nimbryctl shows the decoded weather' "$(journal; ctl status)"
holds 'the settings are readable by their owner alone' [ "$(in_root stat -c '%U %a' /var/lib/nimbry/Nimbry.ini)" = 'nimbry 600' ]
holds 'nimbryctl draws a picture' ctl graph temperature --png /root/graph.png
page 'sudo systemctl status nimbryd' 'sudo journalctl --unit nimbryd' 'sudo fuser -v /dev/ttyUSB0'
holder=$(in_root fuser -v /dev/ttyUSB0 2>&1)
grep -q nimbryd <<<"$holder" || fail 'the manual tells how to see who has the port' "$holder"

step 'pages in another folder, as the manual says'
in_root install -d -o nimbry /var/www/html
in_root cp /etc/hostname /var/lib/nimbry/myhtml.html
save_pages() {
    ctl set FTP LocalPath /var/www/html && ctl set FTP LocalSave True && ctl set FTP FTPRemoteFile index.html && ctl apply internet
    ctl generate
}
holds 'a page is made' save_pages
[ ! -e "$root/var/www/html/index.html" ] || fail 'the service writes nowhere but in its folder'
sed -n '/^```text/,/^```/{/^```/d;p}' "$source_folder/docs/service.md" >"$root/root/edited"
ran['sudo systemctl edit nimbryd']=yes
# An editor that writes what the page says; it is asked for on a terminal only.
holds 'what the manual adds to the unit is taken' in_root script --quiet --return --command \
    "SYSTEMD_EDITOR='cp /root/edited' systemctl edit nimbryd" /dev/null
grep -q '^ReadWritePaths=' "$root/etc/systemd/system/nimbryd.service.d/override.conf" || fail 'the manual tells what to write'
in_root systemctl restart nimbryd
eventually shows_temperature || fail 'the service comes back after a restart' "$(journal)"
ctl generate || fail 'a page is made again'
holds 'then it writes there too' eventually [ -e "$root/var/www/html/index.html" ]

step 'killed, stopped, changed, started again'
printf '[Service]\nRestartSec=1\n' >"$root/etc/systemd/system/nimbryd.service.d/soon.conf"
in_root systemctl daemon-reload
in_root systemctl kill --signal=KILL nimbryd
is_back() { [ "$(service NRestarts)" -eq 1 ] && shows_temperature; }
eventually is_back || fail 'a service that was killed starts again by itself' "$(journal)"
page 'sudo systemctl stop nimbryd'
holds 'it ends well when it is told to' [ "$(service Result) $(service ExecMainStatus)" = 'success 0' ]
[ -f "$root/var/lib/nimbry/nbyprog.log" ] || fail 'the service keeps its program log'
in_root chown -R root:root /var/lib/nimbry # somebody has brought files
page 'sudo chown -R nimbry:nimbry /var/lib/nimbry' 'sudo systemctl start nimbryd'
eventually shows_temperature || fail 'the service goes on with what it had' "$(journal)"
holds 'nimbryctl stops it' ctl stop
is_off() { [ "$(in_root systemctl is-active nimbryd)" = inactive ]; }
eventually is_off || fail 'and it stays off' "$(journal)"
said=$(journal | grep -iE 'not permitted|SIGSYS|core-dump' || true)
[ -z "$said" ] || fail 'the unit lets it do all that it needs' "$said"

step 'a name for the adapter'
page 'sudo cp /usr/share/doc/nimbryd/examples/60-weather-station.rules /etc/udev/rules.d/'
rules=$root/etc/udev/rules.d/60-weather-station.rules
sed -i 's/^#\(SUBSYSTEM\)/\1/' "$rules"
holds 'it has three rules' [ "$(grep -c ^SUBSYSTEM "$rules")" -eq 3 ]
said=$(in_root udevadm test /sys/class/mem/null 2>&1) || true
grep -q "${rules##*/}" <<<"$said" || fail 'udev reads the rules' "$said"
! grep -q "${rules##*/}:" <<<"$said" || fail 'udev has nothing to say against the rules' "$said"

step 'the window runs on the same station'
"${enter[@]}" env QT_QPA_PLATFORM=offscreen nimbry --dir /root/window --device /run/station/line >"$NIMBRY_IN_NAMESPACE/window.out" 2>&1 &
window=$!
eventually in_root nimbryctl --dir /root/window status || fail 'nimbry answers' "$(cat "$NIMBRY_IN_NAMESPACE/window.out")"
in_root killall nimbry
wait "$window" && code=0 || code=$?
[ "$code" -eq 0 ] || fail 'nimbry ends with 0 when it is told to' "status $code"
in_root killall nimbry-station
wait "$station" || true

step 'removed, installed again, purged'
touch "$root/var/lib/nimbry/nbextreme.log"
# What was done by hand goes by hand.
rm -r "$rules" "$root/etc/systemd/system/nimbryd.service.d" "$root/var/www"
in_root userdel visitor
page 'sudo apt remove nimbry nimbryd'
holds 'removing keeps the settings' [ -f "$root/var/lib/nimbry/Nimbry.ini" ]
quietly in_root apt-get install "./$nimbryd"
page 'sudo apt purge nimbryd'
inventory >"$NIMBRY_IN_NAMESPACE/records"
left=$(comm -13 "$NIMBRY_IN_NAMESPACE/before" "$NIMBRY_IN_NAMESPACE/records" | grep -v '^/var/lib/nimbry/' || true)
expected=$'/var/lib/nimbry\naccount nimbry\naccount nimbry'
[ "$left" = "$expected" ] || fail 'purging leaves the weather records, the user that they belong to, and nothing else' "$left"
for name in Nimbry.ini nimbry.lock nimbry.socket nbyprog.log NimbryFTPLOG.txt; do
    holds "purging takes $name away" [ ! -e "$root/var/lib/nimbry/$name" ]
done
holds 'the records are there' [ -f "$root/var/lib/nimbry/nbextreme.log" ]

# Whoever wants no records either.
rm -r "$root/var/lib/nimbry"
quietly in_root apt-get install "./$nimbryd"
quietly in_root apt-get purge nimbryd
inventory >"$NIMBRY_IN_NAMESPACE/after"
left=$(comm -3 "$NIMBRY_IN_NAMESPACE/before" "$NIMBRY_IN_NAMESPACE/after")
[ -z "$left" ] || fail 'purging a service without records leaves nothing' "$left"

# Every command that the list says is run here has run.
while IFS= read -r line; do
    [ -n "${ran[$line]:-}" ] || fail 'a command of the manual is run by this test' "$line"
done < <(sed -n '/packages_test/,/^$/{/^#/d;/^$/d;p}' "$source_folder/tests/manual/elsewhere.txt")

[ "$failures" -eq 0 ] && echo 'The packages install, run and go.'
exit "$failures"
