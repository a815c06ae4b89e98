#!/usr/bin/env bash
# Checks that no file includes from a layer above its own, and that the systems stay below the seam.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

layers=(platform common settings products installcheck version app rollout)
failed=0

# refuse WHAT PATTERN PATH...
# A search that could not be made is a failure too.
refuse() {
    local what=$1 pattern=$2 found=0
    shift 2
    grep -rnE --include='*.h' --include='*.cpp' "$pattern" "$@" || found=$?
    if ((found != 1)); then
        echo "$what" >&2
        failed=1
    fi
}

for ((own = 0; own < ${#layers[@]}; ++own)); do
    for ((above = own + 1; above < ${#layers[@]}; ++above)); do
        refuse "${layers[own]}/ includes from ${layers[above]}/, which stands above it" \
            "#include \"${layers[above]}/" "src/${layers[own]}"
    done
    ((own == 0)) || refuse "${layers[own]}/ goes past the seam" \
        '#include "platform/(host|windows)/|#include <(windows|unistd|sys/.*|fcntl)\.h>|#\s*if.*_WIN32' "src/${layers[own]}"
done
refuse "The two programs stand beside each other" '#include "app/' src/rollout
refuse "The host's side of the seam knows Windows" '#include <windows\.h>|"platform/windows/' src/platform/host
refuse "Windows' side of the seam knows the host" '"platform/host/' src/platform/windows
for header in src/platform/*.h; do
    refuse "A header of the seam is not portable" '#include <(windows|unistd|sys/.*|fcntl)\.h>|#\s*if' "$header"
done
exit $failed
