#!/bin/sh
# ports.sh QMCTL SIMULATOR: more controllers than the host has ports to connect from.
set -u

qmctl=$1 simulator=$2
. "$(dirname "$0")/../support/network.sh"

mkfifo "$work/ready"
"$simulator" --count 20 >"$work/ready" &
children=$!
read -r _ <"$work/ready"
echo 40000 40015 >/proc/sys/net/ipv4/ip_local_port_range || fail "the range of ports cannot be set"
for port in $(seq 5005 5024); do echo "127.0.0.1:$port"; done >"$work/list"
"$qmctl" --controllers "$work/list" text Hello >"$work/out" 2>&1 || fail "$(cat "$work/out")"
