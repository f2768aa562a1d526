#!/bin/bash
# managed_test.sh TEST: runs the tests of windows under a manager on a screen of their own. 77 where
# there is no such screen. What dead keys make depends on the locale's table.
command -v xvfb-run >/dev/null || exit 77
export BRCORE8_DISPLAY=x11 LC_ALL=C.UTF-8
exec timeout 120 xvfb-run -a -s "-screen 0 1024x768x24" "$@"
