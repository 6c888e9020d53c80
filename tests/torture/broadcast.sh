#!/bin/sh
# broadcast.sh TESTS SIMULATOR: the calls that broadcast, each while something fails in the middle of it, on a host
# without a way out (see own_host). What nobody answers is waited for a twentieth of the time.
set -u

tests=$1 simulator=$2
. "$(dirname "$0")/../support/network.sh"

controller 1 --udp --wifi --size 96x16
cd "$work" || exit 1
QM_TORTURE_HURRY=20 "$tests" --gtest_filter='*Broadcasts' || fail "see above"
