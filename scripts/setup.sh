#!/usr/bin/env bash
# setup.sh [LIST]: installs the Debian packages of LIST (default: scripts/packages.txt) that are missing, in one
# transaction. Nothing missing: says and does nothing, in a few hundredths of a second.
set -euo pipefail
cd "$(dirname "$0")/.."
list=${1:-scripts/packages.txt}

mapfile -t wanted < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' "$list" | grep -v '^$')

# One query for all; a package that dpkg never heard of is missing too.
installed=$(dpkg-query --show --showformat='${Status}|${Package}\n' "${wanted[@]}" 2>/dev/null |
            sed -n 's/^install ok installed|//p' || true)
mapfile -t missing < <(comm -23 <(printf '%s\n' "${wanted[@]}" | sort -u) <(printf '%s\n' "$installed" | sort -u))
[ "${#missing[@]}" -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "plotix: these packages are missing and only root can install them: ${missing[*]}" >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing ${#missing[@]} Debian packages: ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q >&2
"${as_root[@]}" apt-get install -q -y --no-install-recommends "${missing[@]}" >&2
