#!/bin/sh
# Runs a command with its own /var, in which the device's absolute paths are: in_device.sh COMMAND...
# /var is empty and in memory, or the directory $DEVICE_VAR. Exits with 77, which skips a test, if
# nothing can be mounted.
case " $* " in *" --gtest_list_tests "*) exec "$@" ;; esac
if ! unshare -rm true 2>/dev/null; then
  echo "skipped: cannot mount file systems here"
  exit 77
fi
exec unshare -rm sh -c '
  if [ -n "${DEVICE_VAR:-}" ]; then
    mount --bind "$DEVICE_VAR" /var
  else
    mount -t tmpfs none /var
  fi && mkdir -p /var/mobile/Library/Preferences && exec "$@"' in_device "$@"
