# Sourced by a test whose programs broadcast, and which own_host has put on a host without a way out: gives it
# controllers, each in a network namespace of its own behind an interface of the host:
#
#     host: to1 10.77.1.1/24 ---- controller 1: 10.77.1.2/24
#           to2 10.77.2.1/24 ---- controller 2: 10.77.2.2/24
#
# shellcheck shell=sh disable=SC2154 # the test names its $simulator
work=$(mktemp -d) || exit 1
children=

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

clean_up() {
    for child in $children; do kill "$child" 2>/dev/null; wait "$child" 2>/dev/null; done
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 1' HUP INT TERM

command -v ip >/dev/null || fail "the command ip is missing (package iproute2)"
[ -z "$(ip link show up)" ] || fail "this test broadcasts, and must not do so here: see own_host"
ip link set lo up || fail "the loopback interface cannot be set up"

# cable N OPTION...: the interface toN of the host; its other end is called port.
cable() {
    number=$1
    shift
    ip link add "to$number" type veth peer name port "$@" &&
        ip address add "10.77.${network:-$number}.1/24" dev "to$number" &&
        ip link set "to$number" up || fail "the interface to$number cannot be made"
}

# A cable to a place where nobody is.
cable_to_nobody() {
    cable 1
    ip link set port up || fail "the interface port cannot be set up"
}

# controller N OPTION...: a simulator behind toN, its state in the file N.json and its log in N.log. Its network
# is 10.77.N.0, or that which $network names. Returns once it is ready.
controller() {
    name=$1
    shift
    mkfifo "$work/$name.ready"
    unshare --net "$simulator" --listen 0.0.0.0 --state "$work/$name.json" --verbose "$@" \
        >"$work/$name.ready" 2>"$work/$name.log" &
    children="$children $!"
    read -r line <"$work/$name.ready"
    case $line in
    "qm_simulator ready: "*) ;;
    *) fail "the simulator of controller $name did not start: $line $(cat "$work/$name.log")" ;;
    esac
    cable "$name" netns $!
    at_controller ip address add "10.77.${network:-$name}.2/24" dev port
    at_controller ip link set port up
    wait_for "link at to$name" has_link ip link show "to$name"
    wait_for "link at controller $name" has_link at_controller ip link show port
}

# The kernel notices only after a while that both ends of a cable are up, and loses what is sent until then.
has_link() {
    "$@" | grep -q 'state UP'
}

# wait_for WHAT COMMAND...: until the command succeeds.
wait_for() {
    what=$1 tries=1000
    shift
    until "$@"; do
        tries=$((tries - 1))
        [ "$tries" != 0 ] || fail "there is no $what"
        sleep 0.01
    done
}

# at_controller COMMAND...: in the network of the latest controller.
at_controller() {
    nsenter --target $! --net "$@" || fail "at controller $name: $*"
}
