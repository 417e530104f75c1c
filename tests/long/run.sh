#!/usr/bin/env bash
# Runs the rows of tests.txt, or those that are named, and lists what failed.
set -u
cd "$(dirname "$0")/../.." || exit 1

chosen=" $* "
failed=() ran=0
while read -r name command; do
    case $name in "" | \#*) continue ;; esac
    [ $# -eq 0 ] || [[ $chosen == *" $name "* ]] || continue
    ran=$((ran + 1))
    echo "=== $name: $command"
    bash -c "$command" </dev/null
    case $? in
        0) ;;
        77) echo "=== $name cannot run here" ;;
        *) failed+=("$name") ;;
    esac
done <tests/long/tests.txt
[ "$ran" -ge $# ] || { echo "ERROR - Only $ran of these are in tests/long/tests.txt: $*"; exit 1; }
echo "=== $ran long tests, ${#failed[@]} failed: ${failed[*]:-none}"
[ ${#failed[@]} -eq 0 ] && [ "$ran" -gt 0 ]
