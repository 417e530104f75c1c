#!/usr/bin/env bash
# Every command of docs/guide/, page by page in the order of its README, on the example that is installed with the program.
#   ```sh            commands to run; "sh gdal" and "sh xmdf" where the program can do that
#   # -> a b         the command above left these files
#   # text           it said this
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
guide=$(cd "$here/../../docs/guide" && pwd)
version=$("$PROGRAM" -version </dev/null 2>&1)
VORANT_to_GIS() { "$PROGRAM" "$@" </dev/null; }

# run_step <page> <command> <promises...>: it fails where an ERROR or a question is promised, and only there.
run_step() {
    local page=$1 promise name names fails=0 files=()
    command_line="$2 ($page)"
    for promise in "${@:3}"; do
        case $promise in
            "-> peak depth.asc") files+=("peak depth.asc") ;;
            "-> "*) read -r -a names <<<"${promise#-> }" && files+=("${names[@]}") ;;
            "ERROR - "* | *"try again") fails=1 ;;
        esac
    done
    rm -f -- "${files[@]}"  # those of an earlier page are none of this one's
    eval "$2" >../console.txt 2>&1
    local status=$?
    check "exit status $status; it said: $(tail -n 3 ../console.txt)" [ "$((status != 0))" -eq "$fails" ]
    for name in "${files[@]}"; do check "left no $name" [ -s "$name" ]; done
    for promise in "${@:3}"; do
        [[ $promise == "-> "* ]] || check "did not say: $promise; it said: $(tail -n 3 ../console.txt)" grep -qF -- "$promise" ../console.txt
    done
}

run_page() {
    local line kind on="" step=()
    while IFS= read -r line; do
        case $line in
            '```sh'*) kind=${line#'```sh'} && on=yes
                [[ $version != *"GDAL none"* || $kind != " gdal" ]] && [[ $version != *"HDF5 none"* || $kind != " xmdf" ]] || on="" ;;
            '```') on="" ;;
            "# "*) [ -z "$on" ] || step+=("${line#\# }") && continue ;;
        esac
        [ ${#step[@]} -eq 0 ] || run_step "$(basename "$1")" "${step[@]}"
        step=()
        [ -z "$on" ] || [[ $line == '```'* ]] || step=("$line")
    done <"$1"
}

cp -R "$EXAMPLE"/. .
for page in "$guide"/[a-z]*.md; do
    before=$checks
    check "the guide's list has no $page" grep -qF "($(basename "$page"))" "$guide/README.md"
    run_page "$page"
    [[ $version == *"HDF5 none"* && $page == */xmdf.md ]] || check "no commands in $page" [ "$checks" -gt "$((before + 1))" ]
done
for page in "$guide"/*.md "$here/../../README.md"; do   # a screen: 50 lines of 120 letters
    check "$page is longer than two screens" [ "$(fold -s -w 120 "$page" | wc -l)" -le 100 ]
done
finish
