#!/bin/sh
# find.sh QMCTL SIMULATOR: the verbs that broadcast, in two network namespaces without a way out:
#
#     host: 10.77.1.1/24 ---- controller: 10.77.1.2/24
set -u

qmctl=$1 simulator=$2
work=$(mktemp -d) || exit 1
host=qmctl$$-host there=qmctl$$-there
child=

fail() {
    echo "find: $*" >&2
    exit 1
}

clean_up() {
    [ -n "$child" ] && kill "$child" 2>/dev/null && wait "$child" 2>/dev/null
    ip netns del "$host" 2>/dev/null
    ip netns del "$there" 2>/dev/null
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 1' HUP INT TERM

[ "$(id -u)" = 0 ] || fail "network namespaces cannot be made: this test must be run by root"
command -v ip >/dev/null || fail "the command ip is missing (package iproute2)"

{
    ip netns add "$host" && ip netns add "$there" &&
        ip -n "$host" link add cable type veth peer name cable netns "$there" &&
        ip -n "$host" address add 10.77.1.1/24 dev cable && ip -n "$there" address add 10.77.1.2/24 dev cable &&
        ip -n "$host" link set cable up && ip -n "$there" link set cable up
} || fail "the network cannot be made"

start() {
    mkfifo "$work/ready"
    ip netns exec "$there" "$simulator" --listen 0.0.0.0 --udp --wifi >"$work/ready" 2>&1 &
    child=$!
    read -r line <"$work/ready" && case $line in "qm_simulator ready: "*) return ;; esac
    fail "the simulator did not start: $line"
}

# expect STATUS TEXT ARGUMENT...: what qmctl has to print somewhere.
expect() {
    status=$1 text=$2
    shift 2
    ip netns exec "$host" "$qmctl" "$@" >"$work/out" 2>&1
    [ $? = "$status" ] && grep -qF -e "$text" "$work/out" || fail "qmctl $*: $(cat "$work/out")"
}

expect 2 'broadcast: no controller answered' find --network
start
expect 0 'Found at        10.77.1.2' find
expect 0 '"mac":"02:51:4D:00:00:01","ip":"192.168.0.199"' --json find --network
expect 0 '"port":65535' --json network set-ip 10.77.1.2 255.255.255.0 10.77.1.1 \
    --port 65535 --net-id abcdefghijkl --server 10.77.1.9:40000 --heartbeat 30
expect 0 '"mac":"00-1A-2B-3c-4d-5e"' --json network set-mac 00-1A-2B-3c-4d-5e
expect 0 '"mac":"00:1A:2B:3C:4D:5E","ip":"10.77.1.2","subnet_mask":"255.255.255.0","gateway":"10.77.1.1","port":65535' \
    --json find --network
expect 0 '"server_ip":"10.77.1.9","server_port":40000,"heartbeat":30,"custom_id":"abcdefghijkl"' --json \
    -c 10.77.1.2 network show
expect 0 '"ssid":"qm_simulator","password":"12345678"' --json network wifi
expect 0 '"ssid":"Sign post"' --json network wifi 'Sign post' 'correct horse'
expect 0 '"ssid":"Sign post","password":"correct horse"' --json network wifi
