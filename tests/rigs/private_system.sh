#!/bin/sh
# private_system.sh command...
# Runs a test in a process and mount namespace of its own (needs root), in which /run is empty: it may have a system
# bus and a logind there, and when it ends, however it ends, whatever it started ends with it.
if [ "$1" != --inside ]; then
    exec unshare --mount --pid --fork --kill-child --mount-proc "$0" --inside "$@"
fi
shift
mount -t tmpfs tmpfs /run || exit 1
mkdir -p /run/dbus /run/user /run/udev/data /run/udev/tags/power-switch /run/systemd/logind.conf.d
for folder in seats sessions users inhibit machines system; do mkdir -p "/run/systemd/$folder"; done
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/dbus/system_bus_socket
export DBUS_SESSION_BUS_ADDRESS=unix:path=/run/user/session_bus_socket
"$@"
