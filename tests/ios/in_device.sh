#!/bin/sh
# Runs a command with a /var of its own, where the device's absolute paths lead: in_device.sh COMMAND...
# It is empty and in memory, or the folder that $DEVICE_VAR names. Ends with 77, by which a test is
# skipped, where nothing can be mounted.
case " $* " in *" --gtest_list_tests "*) exec "$@" ;; esac
if ! unshare -rm true 2>/dev/null; then
  echo "nothing can be mounted here: skipped"
  exit 77
fi
exec unshare -rm sh -c '
  if [ -n "${DEVICE_VAR:-}" ]; then
    mount --bind "$DEVICE_VAR" /var
  else
    mount -t tmpfs none /var
  fi && mkdir -p /var/mobile/Library/Preferences && exec "$@"' in_device "$@"
