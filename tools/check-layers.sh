#!/usr/bin/env bash
# Checks that no file includes from a layer above its own, and that only src/platform/ contains platform-dependent code.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

layers=(platform common settings products installcheck version app rollout)
failed=0

# forbid MESSAGE PATTERN PATH...
# Fails if a source file contains the pattern, or if grep fails.
forbid() {
    local message=$1 pattern=$2 status=0
    shift 2
    grep -rnE --include='*.h' --include='*.cpp' "$pattern" "$@" || status=$?
    if ((status != 1)); then
        echo "$message" >&2
        failed=1
    fi
}

for ((own = 0; own < ${#layers[@]}; ++own)); do
    for ((above = own + 1; above < ${#layers[@]}; ++above)); do
        forbid "${layers[own]}/ includes from ${layers[above]}/, a layer above it" \
            "#include \"${layers[above]}/" "src/${layers[own]}"
    done
    ((own == 0)) || forbid "${layers[own]}/ contains platform-dependent code" \
        '#include "platform/(host|windows)/|#include <(windows|unistd|sys/.*|fcntl)\.h>|#\s*if.*_WIN32' "src/${layers[own]}"
done
forbid "rollout/ includes from app/, the other program" '#include "app/' src/rollout
forbid "src/platform/host/ contains Windows code" '#include <windows\.h>|"platform/windows/' src/platform/host
forbid "src/platform/windows/ contains host code" '"platform/host/' src/platform/windows
for header in src/platform/*.h; do
    forbid "A header of src/platform/ is not portable" '#include <(windows|unistd|sys/.*|fcntl)\.h>|#\s*if' "$header"
done
exit $failed
