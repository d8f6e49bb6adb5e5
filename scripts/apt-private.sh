#!/bin/bash
# apt-private.sh STATE_DIR deb|deb-src APT_GET_ARGUMENT...
#
# Runs apt-get with package lists of its own in STATE_DIR, made from the machine's sources of
# Debian itself.  That needs no rights and changes nothing on the machine: neither its list of
# architectures nor its package lists.
set -euo pipefail
state=$1 type=$2
shift 2

mkdir -p "$state"/{sources.d,lists/partial,cache/archives/partial}
: >>"$state/status"

# Keep the suites of Debian, whatever mirror they come from, and drop the sources of other
# publishers and the limits to an architecture.
suite='(bookworm|oldstable|stable)(-updates|-security|/updates)?'
shopt -s nullglob
awk -v RS= -v ORS='\n\n' -v type="$type" -v suite="$suite" '
    $0 ~ "(^|\n)Suites:([^\n]*[ \t])?" suite "([ \t]|\n|$)" {
        gsub(/(^|\n)Architectures:[^\n]*/, "")
        gsub(/Types:[^\n]*/, "Types: " type)
        print
    }' /dev/null /etc/apt/sources.list.d/*.sources >"$state/sources.d/debian.sources"
lists=(/etc/apt/sources.list.d/*.list)
[ ! -r /etc/apt/sources.list ] || lists+=(/etc/apt/sources.list)
sed -nE -e "\#^deb[ \t].*[ \t]${suite}[ \t]#{s/^deb/$type/; s/arch=[^] ]*//; p}" \
    /dev/null "${lists[@]}" | sort -u >"$state/sources.d/debian.list"

exec apt-get -q -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$state/sources.d" \
    -o "Dir::State=$state" -o "Dir::State::Lists=$state/lists" \
    -o "Dir::State::status=$state/status" -o "Dir::Cache=$state/cache" \
    -o APT::Sandbox::User=root -o Acquire::Retries=2 \
    -o Acquire::http::Timeout=20 -o Acquire::https::Timeout=20 "$@"
