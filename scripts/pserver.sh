# shellcheck shell=bash disable=SC2154
# pserver.sh: a real password server of cvs on 127.0.0.1, with an empty repository.  Sourced.

pserver_pid=
pserver_dir=

start_pserver() {
    local user port='' i
    pserver_dir=$(mktemp -d /tmp/tandrel-pserver.XXXXXX)
    at_exit+=(stop_pserver)
    chmod 755 "$pserver_dir"
    export TANDREL_PSERVER_PATH=$pserver_dir/repository
    export TANDREL_PSERVER_USER=tester TANDREL_PSERVER_PASSWORD=s3cretpw

    # The server changes to the system user that the password file names.  It refuses root, and
    # without root's rights it can only stay who it is.
    user=$(id -un)
    [ "$user" != root ] || user=nobody

    make_repository "$user" || fail "no repository could be made for the password server"

    # socat takes a free port and says in its log which.
    : >"$logs/pserver.log"
    HOME=/ setpriv --pdeathsig TERM socat -d -d TCP-LISTEN:0,bind=127.0.0.1,fork \
        "EXEC:cvs -f --allow-root=$TANDREL_PSERVER_PATH pserver,nofork" \
        </dev/null >"$logs/pserver.log" 2>&1 9>&- &
    pserver_pid=$!
    for ((i = 0; i < 200; i++)); do
        port=$(sed -n 's/.* listening on .*:\([0-9]*\)$/\1/p' "$logs/pserver.log")
        [ -z "$port" ] || break
        kill -0 "$pserver_pid" 2>/dev/null || break
        sleep 0.02
    done
    [ -n "$port" ] || fail "the password server does not start (log: $logs/pserver.log)"
    export TANDREL_PSERVER_PORT=$port
}

make_repository() { # SYSTEM_USER
    local CVSROOT=$TANDREL_PSERVER_PATH hash
    # shellcheck disable=SC2016 # the dollars are Perl's
    hash=$(perl -e 'print crypt($ARGV[0], q($1$tandrel$))' "$TANDREL_PSERVER_PASSWORD") &&
        (umask 022 && HOME=/ cvs -f -d "$CVSROOT" init) &&
        printf '%s:%s:%s\n' "$TANDREL_PSERVER_USER" "$hash" "$1" >"$CVSROOT/CVSROOT/passwd" &&
        chmod u+w "$CVSROOT/CVSROOT/config" &&
        echo 'SystemAuth=no' >>"$CVSROOT/CVSROOT/config" &&
        { [ "$(id -u)" != 0 ] || chown -R "$1:" "$pserver_dir"; }
}

stop_pserver() {
    if [ -n "$pserver_pid" ]; then
        end_tree "$pserver_pid"
        wait "$pserver_pid" 2>/dev/null
    fi
    rm -rf "$pserver_dir"
}
