#!/bin/sh
# Runs a test program that creates real windows under wine on a machine
# without a display: wine's null display driver, in a prefix of the
# program's own so that no other test sees the setting.
# Usage: wine_windows.sh WINE_RUN PREFIX PROGRAM [ARGS...]
run=$1; prefix=$2; shift 2
if [ ! -f "$prefix/.cadtools-null-display" ]; then
  sh "$run" "$prefix" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 || exit 1
  # The prefix's first start set up its desktop without a driver; wait for
  # that wine server to end so that the next one reads the setting.
  server=$(command -v wineserver || true)
  [ -n "$server" ] || { [ -x /usr/lib/wine/wineserver64 ] && server=/usr/lib/wine/wineserver64; }
  [ -n "$server" ] || server=/usr/lib/wine/wineserver
  WINEPREFIX=$prefix "$server" -w
  touch "$prefix/.cadtools-null-display"
fi
exec sh "$run" "$prefix" "$@"
