#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The host behind a real home router on this machine: three network namespaces of the test's own,
# the home (the host, 192.168.77.2), the router (192.168.77.1 inside, OUTSIDE outside, nftables
# masquerading, Debian's miniupnpd with the switches the case asks for) and the outside (the
# partner, OUTSIDE's .2).
#   router.sh AUTOPLAY GAME RESOURCES CASE
# both, upnp, natpmp:  the host (the autoplay program with --map-port) names the router's outside
#                      address and its port; the partner joins through it from the outside; a short
#                      online game ends with the same final state hash on both.
# no-service:          no miniupnpd: the "forward it by hand" line within 5 s, while a partner in
#                      the same house joins and plays: the host played all along.
# shared:              the router's outside address is in 100.64.0.0/10: the "shares" line.
# removed, removed-upnp: the game hosts in Xvfb; the router holds the opening; after the game's
#                      SIGTERM it holds none.
# Needs root and ip netns; without them it prints SKIPPED and exits with 77. The namespaces and
# everything started in them go when the test ends, however it ends.
set -euo pipefail
autoplay=$1 game=$2 resources=$3 case=$4
SKIP=77
skip() { echo "SKIPPED: $*"; exit "$SKIP"; }
[ "$(id -u)" -eq 0 ] || skip "network namespaces need root"
command -v ip > /dev/null && ip netns list > /dev/null 2>&1 || skip "no ip netns (iproute2)"
command -v nsenter > /dev/null || skip "no nsenter (util-linux)"
for tool in nft upnpc /usr/sbin/miniupnpd; do
  command -v "$tool" > /dev/null || skip "no $tool (scripts/deps.sh test installs it)"
done

id=$$
home=kmvth$id router=kmvtr$id outside=kmvto$id
work=$(mktemp -d)
pids=()
cleanup() {
  exec 2> /dev/null		# the shell's word on each process it kills is no news
  for pid in "${pids[@]}"; do kill -9 "$pid" 2> /dev/null || true; done
  for ns in "$home" "$router" "$outside"; do
    for pid in $(ip netns pids "$ns" 2> /dev/null); do kill -9 "$pid" 2> /dev/null || true; done
  done
  wait 2> /dev/null || true
  for ns in "$home" "$router" "$outside"; do ip netns del "$ns" 2> /dev/null || true; done
  [ -n "${KEEP_WORK:-}" ] || rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "FAIL ($case): $*" >&2
  for f in "$work"/*/out.txt "$work"/*/err.txt "$work"/*/log.txt "$work"/miniupnpd.txt; do
    [ -s "$f" ] && { echo "== $f" >&2; tail -n 20 "$f" >&2; }
  done
  exit 1
}
# nsenter rather than ip netns exec, which also remounts / and so fails in a chroot, where / is no
# mount point of its own; the test needs the network of the namespace alone.
in_ns() { local ns=$1; shift; nsenter --net="/run/netns/$ns" "$@"; }

port=$(( 20000 + RANDOM % 12000 ))
outside_address=11.77.0.1
[ "$case" = shared ] && outside_address=100.64.0.1
natpmp=yes upnp=yes
[ "$case" = upnp ] || [ "$case" = removed-upnp ] && natpmp=no
[ "$case" = natpmp ] && upnp=no

# The three namespaces and the two cables between them.
# A container may forbid namespaces even to root: that is a machine that cannot run the test.
why=$(ip netns add "$home" 2>&1) || skip "cannot make a network namespace here: $why"
for ns in "$home" "$router" "$outside"; do
  [ "$ns" = "$home" ] || ip netns add "$ns"
  in_ns "$ns" ip link set lo up
done
ip link add "h$id" netns "$home" type veth peer name "ri$id" netns "$router"
ip link add "o$id" netns "$outside" type veth peer name "ro$id" netns "$router"
in_ns "$home" ip addr add 192.168.77.2/24 dev "h$id"
in_ns "$home" ip link set "h$id" up
in_ns "$home" ip route add default via 192.168.77.1
in_ns "$router" ip addr add 192.168.77.1/24 dev "ri$id"
in_ns "$router" ip link set "ri$id" up
in_ns "$router" ip addr add "$outside_address/24" dev "ro$id"
in_ns "$router" ip link set "ro$id" up
in_ns "$outside" ip addr add "${outside_address%.*}.2/24" dev "o$id"
in_ns "$outside" ip link set "o$id" up
in_ns "$router" sysctl -qw net.ipv4.ip_forward=1
# Masquerading out, and the chains miniupnpd fills with its openings.
in_ns "$router" nft -f - <<NFT
table inet kmvt {
  chain forward { type filter hook forward priority 0; policy accept; jump miniupnpd; }
  chain miniupnpd { }
  chain prerouting { type nat hook prerouting priority -100; policy accept; jump prerouting_miniupnpd; }
  chain postrouting { type nat hook postrouting priority 100; policy accept; oifname "ro$id" masquerade; jump postrouting_miniupnpd; }
  chain prerouting_miniupnpd { }
  chain postrouting_miniupnpd { }
}
NFT
if [ "$case" != no-service ]; then
  cat > "$work/miniupnpd.conf" <<CONF
ext_ifname=ro$id
listening_ip=ri$id
port=0
enable_natpmp=$natpmp
enable_upnp=$upnp
secure_mode=yes
system_uptime=yes
upnp_table_name=kmvt
upnp_nat_table_name=kmvt
allow 1024-65535 192.168.77.0/24 1024-65535
deny 0-65535 0.0.0.0/0 0-65535
CONF
  in_ns "$router" /usr/sbin/miniupnpd -f "$work/miniupnpd.conf" -d -P "$work/miniupnpd.pid" > "$work/miniupnpd.txt" 2>&1 &
  pids+=($!)
  for _ in $(seq 1 50); do
    grep -q "Listening for NAT-PMP\|HTTP listening" "$work/miniupnpd.txt" 2> /dev/null && break
    sleep 0.1
  done
fi

# Starts a side in a namespace and a folder of its own: start SIDE NAMESPACE PROGRAM ARGUMENTS...
start() {
  local side=$1 ns=$2
  shift 2
  mkdir -p "$work/$side"
  ln -sfn "$resources" "$work/$side/resources"
  ( cd "$work/$side" && exec nsenter --net="/run/netns/$ns" "$@" > out.txt 2> err.txt ) &
  pids+=($!)
}
# Waits for a line that starts with text on the side's terminal: await SIDE TEXT SECONDS; the
# line in said, printed with the seconds it took.
await() {
  local side=$1 text=$2 tenths=$(( $3 * 10 )) i
  for (( i = 0; i < tenths; i++ )); do
    if grep -q "^$text" "$work/$side/err.txt" 2> /dev/null; then
      said=$(grep -m 1 "^$text" "$work/$side/err.txt")
      echo "$said (after $(( i / 10 )).$(( i % 10 )) s)"
      return 0
    fi
    sleep 0.1
  done
  fail "no \"$text\" line on the $side's terminal within $3 s"
}
finish() {
  local status=0
  wait "$1" || status=$?
  [ "$status" = "$2" ] || fail "$3 (exit status $status)"
}
final_hash() {
  sed -n 's/^Online game over .*final state hash: \([0-9a-f]*\)$/\1/p' "$work/$1/out.txt"
}
# An online game to its end: play HOST-PID PARTNER-ADDRESS PARTNER-NAMESPACE
play() {
  start partner "$3" "$autoplay" --difficulty=1 --frames=400 "--join=$2:$port"
  local partner=${pids[-1]}
  finish "$1" 0 "the host did not end well"
  finish "$partner" 0 "the partner did not end well"
  local hash
  hash=$(final_hash host)
  [ -n "$hash" ] && [ "$hash" = "$(final_hash partner)" ] || fail "the final state hashes differ"
  grep -qxF "$said" "$work/host/log.txt" || fail "the line is not in the host's log"
  echo "the game through $2 ended on both at $hash"
}
# The router's openings of the port, as the home side lists them.
openings() {
  in_ns "$home" upnpc -l 2> /dev/null | grep -c "UDP *$port->192.168.77.2:$port" || true
}

autoplay_host=("$autoplay" --difficulty=1 --frames=400 "--host=$port" --map-port)
case "$case" in
  both|upnp|natpmp)
    start host "$home" "${autoplay_host[@]}" --wait=60
    await host "Partner joins with: " 5
    [[ "$said" == "Partner joins with: kormaveth2d --join $outside_address:$port (in the same house: kormaveth2d --join 192.168.77.2:$port)"* ]] ||
      fail "the line does not name $outside_address:$port and the home address"
    play "${pids[-1]}" "$outside_address" "$outside"
    ;;
  no-service)
    start host "$home" "${autoplay_host[@]}" --wait=60
    host=${pids[-1]}
    await host "No router answered to open UDP port $port: forward it by hand (README, Online)" 5
    play "$host" 192.168.77.2 "$router"
    ;;
  shared)
    start host "$home" "${autoplay_host[@]}" --wait=8
    await host "Your provider shares one outside address between customers: no port can be opened here. Let your partner host." 5
    ;;
  removed|removed-upnp)
    start host "$home" bash "$(realpath "$(dirname "$0")/../virtual_display.sh")" "-screen 0 800x600x24" sh -c 'echo $$ > game.pid; exec "$0" --host "$1" --window' "$game" "$port"
    await host "Partner joins with: " 8
    [ "$(openings)" = 1 ] || fail "the router does not list the opening"
    kill -TERM "$(cat "$work/host/game.pid")"
    finish "${pids[-1]}" 0 "the game did not end well on SIGTERM"
    [ "$(openings)" = 0 ] || fail "the router still holds the opening after the game ended"
    ! in_ns "$router" nft list chain inet kmvt prerouting_miniupnpd | grep -q "dport $port" ||
      fail "the router still forwards the port"
    echo "after SIGTERM the router holds no opening of UDP $port"
    ;;
  *) fail "unknown case" ;;
esac
echo "PASS ($case)"
