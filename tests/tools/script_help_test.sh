#!/bin/bash
# Each script knows --help and refuses an option that it does not know, before it does anything.
# Usage: script_help_test.sh FOLDER...     the folders of the scripts
set -u
bad=0
for folder in "$@"; do
    for script in "$folder"/*; do
        name=${folder##*/}/${script##*/}
        [ -f "$script" ] && [ -x "$script" ] || continue # what the others read in
        if ! help=$(timeout 20 "$script" --help 2>&1) || [[ $help != "usage: $name"* ]]; then
            echo "$name --help: $help"
            bad=1
        fi
        if timeout 20 "$script" --no-such-option >/dev/null 2>&1; then
            echo "$name takes --no-such-option"
            bad=1
        fi
    done
done
exit $bad
