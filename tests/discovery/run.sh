#!/bin/sh
# run.sh CASE SIMULATOR PROBE: one discovery case.
set -u

case_name=$1 simulator=$2 probe=$3
. "$(dirname "$0")/../support/network.sh"

run() {
    "$probe" "$@" || fail "$case_name: the probe failed (see above)
$(cat "$work"/*.log 2>/dev/null)"
}

saw() {
    wait_for "$2 in the log of controller $1" grep -q "$2" "$work/$1.log"
}

case $case_name in
ping_by_broadcast)
    controller 1 --udp --size 96x16
    run udp_ping
    ;;
network_search)
    controller 1 --udp --size 96x16
    run network_search
    ;;
network_search_web)
    controller 1 --udp --size 96x16 --long-search
    run network_search_web
    ;;
set_network)
    controller 1 --udp --size 96x16
    run set_network "$work/1.json"
    ;;
both_interfaces | same_address)
    [ "$case_name" = both_interfaces ] || network=1
    controller 1 --udp --size 96x16
    controller 2 --udp --size 96x16
    run udp_ping
    saw 1 handshake
    saw 2 handshake
    ;;
search_by_module)
    controller 1 --wifi --size 96x16
    run search 10.77.1.2
    saw 1 "Wi-Fi module, AT:"
    ;;
search_by_fixed_address)
    controller 1 --size 96x16
    ip address add 192.168.100.2/24 dev to1
    at_controller ip address add 192.168.100.1/24 dev port
    run search 192.168.100.1
    ;;
search_by_broadcast)
    controller 1 --udp --port 6005 --size 96x16
    run search 10.77.1.2
    ;;
search_among_two) # the first answers the handshake only, from an address that is longer than the other's
    controller 100 --udp --port 6005 --size 96x16 --fault silence --fault-after 1
    controller 2 --udp --port 6005 --size 96x16 --fault delay --fault-delay 500
    run search 10.77.2.2
    ;;
search_in_vain)
    cable_to_nobody
    run search_in_vain
    ;;
wifi_setup)
    controller 1 --wifi --size 96x16
    run wifi_setup "$work/1.json"
    ;;
wifi_absent)
    cable_to_nobody
    run wifi_absent
    ;;
loopback_only)
    run loopback_only
    ;;
*) fail "there is no case $case_name" ;;
esac
