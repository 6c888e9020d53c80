#!/bin/sh
# find.sh QMCTL SIMULATOR: the verbs that broadcast.
set -u

qmctl=$1 simulator=$2
. "$(dirname "$0")/../support/network.sh"

# expect STATUS TEXT ARGUMENT...: what qmctl has to print somewhere.
expect() {
    status=$1 text=$2
    shift 2
    "$qmctl" "$@" >"$work/out" 2>&1
    [ $? = "$status" ] && grep -qF -e "$text" "$work/out" || fail "qmctl $*: $(cat "$work/out")"
}

cable_to_nobody
expect 2 'broadcast: no controller gave a good answer' find --network
controller 2 --udp --wifi
expect 0 'Found at        10.77.2.2' -c 10.77.2.8,10.77.2.9 find
expect 0 '"mac":"02:51:4D:00:00:01","ip":"192.168.0.199"' --json find --network
expect 0 '"port":65535' --json network set-ip 10.77.2.2 255.255.255.0 10.77.2.1 \
    --port 65535 --net-id abcdefghijkl --server 10.77.2.9:40000 --heartbeat 30
expect 0 '"mac":"00-1A-2B-3c-4d-5e"' --json network set-mac 00-1A-2B-3c-4d-5e
expect 0 '"mac":"00:1A:2B:3C:4D:5E","ip":"10.77.2.2","subnet_mask":"255.255.255.0","gateway":"10.77.2.1","port":65535' \
    --json find --network
expect 0 '"server_ip":"10.77.2.9","server_port":40000,"heartbeat":30,"custom_id":"abcdefghijkl"' --json \
    -c 10.77.2.2 network show
expect 0 '"ssid":"qm_simulator","password":"12345678"' --json network wifi
expect 0 '"ssid":"Sign post"' --json network wifi 'Sign post' 'correct horse'
expect 0 '"ssid":"Sign post","password":"correct horse"' --json network wifi
