#!/usr/bin/env bash
# Makes the Debian packages of a build, compares what they hold with contents.txt, and looks at them with lintian.
#
# usage: make_packages.sh BUILD_FOLDER FOLDER
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$2"
folder=$(cd "$2" && pwd)
rm -f "$folder"/*.deb
(cd "$1" && cpack -G DEB -B "$folder" >"$folder/cpack.log" 2>&1) || { cat "$folder/cpack.log"; exit 1; }
rm -rf "$folder/_CPack_Packages"
for deb in "$folder"/*.deb; do
    dpkg-deb --contents "$deb" | awk -v package="$(dpkg-deb --field "$deb" Package)" '!/^d/ {print package ":", $1, $2, $6}'
done | LC_ALL=C sort | diff <(LC_ALL=C sort "$tests/contents.txt") - || {
    echo 'The packages do not hold what contents.txt says (< says, > holds).'
    exit 1
}
# Not said of packages that no distribution has: whom they are to be reported to, and which of its reports they close.
lintian --allow-root --fail-on error,warning --suppress-tags bogus-mail-host,bogus-mail-host-in-debian-changelog,initial-upload-closes-no-bugs "$folder"/*.deb
ls -l "$folder"/*.deb
