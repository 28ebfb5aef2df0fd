#!/bin/bash
# The demonstration of ./run is a test as well: every content must come back as it was captured.
exec "$(dirname "$0")/../../tools/desktop/demo" "$@"
