#!/usr/bin/env bash
# Makes the Debian packages of a build and looks at them with lintian: make_packages.sh BUILD_FOLDER FOLDER
set -euo pipefail
mkdir -p "$2"
folder=$(cd "$2" && pwd)
rm -f "$folder"/*.deb
(cd "$1" && cpack -G DEB -B "$folder" >"$folder/cpack.log" 2>&1) || { cat "$folder/cpack.log"; exit 1; }
rm -rf "$folder/_CPack_Packages"
# Not said of packages that no distribution has: whom they are to be reported to, and which of its reports they close.
lintian --allow-root --fail-on error,warning --suppress-tags bogus-mail-host,bogus-mail-host-in-debian-changelog,initial-upload-closes-no-bugs "$folder"/*.deb
ls -l "$folder"/*.deb
