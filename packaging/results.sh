# shellcheck shell=bash
# Counts the checks of a script. The last line, by total, is what .ci/run adds up.
passed=0
failed=0

# result TEXT COMMAND...: runs the command, and tells whether it succeeded.
result() {
    if "${@:2}"; then
        passed=$((passed + 1))
        echo "ok      $1"
    else
        failed=$((failed + 1))
        echo "FAILED  $1"
    fi
}

total() {
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
}
