#!/bin/sh
# run.sh CASE SIMULATOR PROBE: one discovery case in network namespaces of its own.
#
# Three namespaces without a way out: the host, and two controllers, each behind an interface of the host:
#
#     host: to1 10.77.1.1/24 ---- controller 1: 10.77.1.2/24
#           to2 10.77.2.1/24 ---- controller 2: 10.77.2.2/24
set -u

case_name=$1 simulator=$2 probe=$3
work=$(mktemp -d) || exit 1
prefix="qm$$-$(basename "$work" | tr -dc 'A-Za-z0-9')"
host=$prefix-h
children=

fail() {
    echo "discovery: $*" >&2
    exit 1
}

clean_up() {
    for child in $children; do kill "$child" 2>/dev/null; wait "$child" 2>/dev/null; done
    for space in "$host" "$prefix-1" "$prefix-2"; do ip netns del "$space" 2>/dev/null; done
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 1' HUP INT TERM

[ "$(id -u)" = 0 ] || fail "network namespaces cannot be made: this test must be run by root"
command -v ip >/dev/null || fail "the command ip is missing (package iproute2)"

make_space() {
    ip netns add "$1" || fail "the network namespace $1 cannot be made"
    ip -n "$1" link set lo up || fail "the loopback interface of $1 cannot be set up"
}

# join N: a cable from the host to controller N.
join() {
    make_space "$prefix-$1"
    ip -n "$host" link add "to$1" type veth peer name port netns "$prefix-$1" &&
        ip -n "$host" address add "10.77.$1.1/24" dev "to$1" &&
        ip -n "$prefix-$1" address add "10.77.$1.2/24" dev port &&
        ip -n "$host" link set "to$1" up &&
        ip -n "$prefix-$1" link set port up || fail "controller $1 cannot be connected"
}

# start N OPTION...: the simulator of controller N, its state in the file N.json. Returns once it is ready.
start() {
    number=$1
    shift
    mkfifo "$work/$number.ready"
    ip netns exec "$prefix-$number" "$simulator" --listen 0.0.0.0 --state "$work/$number.json" --verbose "$@" \
        >"$work/$number.ready" 2>"$work/$number.log" &
    children="$children $!"
    read -r line <"$work/$number.ready" || fail "the simulator of controller $number did not start: $(cat "$work/$number.log")"
    case $line in
    "qm_simulator ready: "*) ;;
    *) fail "the simulator of controller $number said: $line" ;;
    esac
}

run() {
    ip netns exec "$host" "$probe" "$@" || fail "$case_name: the probe failed (see above)
$(cat "$work"/*.log 2>/dev/null)"
}

saw() {
    grep -q "$2" "$work/$1.log" || fail "$case_name: controller $1 saw no $2: $(cat "$work/$1.log")"
}

make_space "$host"
case $case_name in
ping_by_broadcast)
    join 1 && start 1 --udp --size 96x16
    run udp_ping
    ;;
network_search)
    join 1 && start 1 --udp --size 96x16
    run network_search
    ;;
network_search_web)
    join 1 && start 1 --udp --size 96x16 --web
    run network_search_web
    ;;
set_network)
    join 1 && start 1 --udp --size 96x16
    run set_network "$work/1.json"
    ;;
both_interfaces)
    join 1 && join 2
    start 1 --udp --size 96x16
    start 2 --udp --size 96x16
    run udp_ping
    saw 1 handshake
    saw 2 handshake
    ;;
search_by_module)
    join 1 && start 1 --wifi --size 96x16
    run search 10.77.1.2
    saw 1 "Wi-Fi module, AT:"
    ;;
search_by_fixed_address)
    join 1
    ip -n "$host" address add 192.168.100.2/24 dev to1
    ip -n "$prefix-1" address add 192.168.100.1/24 dev port
    start 1 --size 96x16
    run search 192.168.100.1
    ;;
search_by_broadcast)
    join 1 && start 1 --udp --port 6005 --size 96x16
    run search 10.77.1.2
    ;;
search_in_vain)
    join 1
    run search_in_vain
    ;;
wifi_setup)
    join 1 && start 1 --wifi --size 96x16
    run wifi_setup "$work/1.json"
    ;;
wifi_absent)
    join 1
    run wifi_absent
    ;;
loopback_only)
    run loopback_only
    ;;
*) fail "there is no case $case_name" ;;
esac
