#!/bin/bash
# Whether a program is built so that a fault in it is hard to use against its user: placed anew at
# each start, no table of addresses left open, no data that can be run. Of what is shipped, that it
# checks its stack and its buffers too.
# Usage: hardened.sh PROGRAM [--shipped]
set -u
program=$1
bad=0
complain() {
    echo "${program##*/}: $1"
    bad=1
}
[ -x "$program" ] || { echo "$program: no such program"; exit 1; }
header=$(LC_ALL=C readelf --file-header "$program") || exit 1
dynamic=$(LC_ALL=C readelf --dynamic --wide "$program")
segments=$(LC_ALL=C readelf --segments --wide "$program")
grep -q 'Type: *DYN' <<<"$header" && grep -q 'FLAGS_1.*PIE' <<<"$dynamic" ||
    complain "is not position independent"
grep -q 'BIND_NOW\|FLAGS_1.*NOW' <<<"$dynamic" || complain "binds late"
grep -q 'GNU_RELRO' <<<"$segments" || complain "has no read-only relocations"
grep 'GNU_STACK' <<<"$segments" | grep -q 'RW ' || complain "has a stack that can be run"
! grep -q 'TEXTREL' <<<"$dynamic" || complain "has relocations in its code"
if [ "${2:-}" = --shipped ]; then
    names=$(LC_ALL=C nm --dynamic --undefined-only "$program")
    for name in __stack_chk_fail __glibcxx_assert_fail; do
        grep -q "$name" <<<"$names" || complain "does not use $name"
    done
fi
exit $bad
