#!/bin/bash
# script/mutants on a tree of two files, which a script "builds" and "tests": what is caught, what
# survives, and each fault that the list may have.
# Usage: self_test.sh MUTANTS FOLDER
set -u
mutants=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder/tree/tests/mutants" "$folder/tree/core" || exit 1
tree=$folder/tree
list=$tree/tests/mutants/list.txt
failures=0

# The program "2 + 3 = 5", and a comment that no test reads.
printf 'sum 2 + 3\nanswer 5\n# a & b, "c" \\d *\nend\n' >"$tree/core/sum.txt"
cat >"$folder/build" <<'END'
#!/bin/bash
echo "$*" >>../built
grep -q '^end$' core/sum.txt
END
cat >"$folder/test" <<'END'
#!/bin/bash
echo "$*" >>../tested
grep -q '^sum 2 + 3$' core/sum.txt && grep -q '^answer 5$' core/sum.txt
END
chmod +x "$folder/build" "$folder/test"

run() { # ARGUMENT...
    KVO_MUTANTS_TREE=$tree KVO_MUTANTS_COPY=$folder/copy KVO_MUTANTS_BUILD=$folder/build \
        KVO_MUTANTS_TEST=$folder/test "$mutants" "$@" >"$folder/output" 2>&1
}
expect() { # WORDS STATUS TEXT...: the run's status, and texts of its output
    local words=$1 status=$2 got=$3 text
    shift 3
    [ "$status" = "$got" ] || {
        echo "$words: ended with $got, not $status"
        failures=$((failures + 1))
    }
    for text in "$@"; do
        grep -qF -- "$text" "$folder/output" && continue
        echo "$words: does not say \"$text\" but"
        cat "$folder/output"
        failures=$((failures + 1))
    done
}

printf '# a comment\nfile core/sum.txt\nold 2 + 3\nnew 2 - 3\ntests sum_tests\n\n' >"$list"
printf 'file core/sum.txt\nold answer 5\nnew answer 6\ntests sum_tests=Sum.* more\n' >>"$list"
run
expect "two caught" 0 $? "caught   core/sum.txt: 2 + 3 -> 2 - 3" "== 2 of 2 caught: 100 %"
cmp -s "$tree/core/sum.txt" "$folder/copy/core/sum.txt" ||
    { echo "the copy is not restored"; failures=$((failures + 1)); }
sort -u "$folder/built" "$folder/tested" >"$folder/output"
expect "targets and filters" 0 0 "sum_tests more" "sum_tests Sum.*" "more *"
run --check
expect "check" 0 $? "2 mutants fit the tree"
run link
expect "no such part" 1 $? "there are no such mutants"

# Signs that mean something to a shell stay what they are.
printf 'file core/sum.txt\nold # a & b, "c" \\d *\nnew # & $HOME \\1\ntests t\n' >"$list"
run
expect "a survivor" 1 $? 'survived core/sum.txt: # a & b, "c" \d * -> # & $HOME \1' "NO REASON" \
    "survives without a reason" "== 0 of 1 caught: 0 %"
printf 'survives nobody reads it\n' >>"$list"
run
expect "a share below the goal" 1 $? "nobody reads it"
for ((i = 0; i < 19; i++)); do
    printf '\nfile core/sum.txt\nold answer 5\nnew answer %d\ntests t\n' $((i + 6)) >>"$list"
done
run
expect "a survivor with its reason" 0 $? "== 19 of 20 caught: 95 %"

printf 'file core/sum.txt\nold answer 5\nnew answer 6\ntests t\nsurvives never\n' >"$list"
run
expect "a reason that is none" 1 $? "is caught, but has a reason to survive"
printf 'file core/sum.txt\nold end\nnew\ntests t\n' >"$list"
run
expect "what does not build" 1 $? "broken   core/sum.txt" "does not build, which proves nothing"

printf 'file core/sum.txt\nold sum 4\nnew sum 5\ntests t\n' >"$list"
run --check
expect "an old text that is gone" 1 $? "list.txt:1: the old text is not in core/sum.txt: sum 4"
printf '\nfile core/sum.txt\nold  \nnew x\ntests t\n' >"$list"
run --check
expect "an old text that is there twice" 1 $? "list.txt:2: the old text is more than once"
printf 'file core/gone.txt\nold a\nnew b\ntests t\n' >"$list"
run --check
expect "a file that is gone" 1 $? "core/gone.txt is not there"
printf 'file core/sum.txt\nold answer\nnew answer\ntests t\n' >"$list"
run --check
expect "a mutant that changes nothing" 1 $? "changes nothing"
: >"$list"
for wanted in 6 7 6; do
    printf 'file core/sum.txt\nold answer 5\nnew answer %d\ntests t\n\n' $wanted >>"$list"
done
run --check
expect "a mutant that is there twice" 1 $? "list.txt:11: is the mutant of list.txt:1 again" \
    "1 of 3 mutants do not fit"
printf 'file core/sum.txt\nold answer\nnew question\n' >"$list"
run --check
expect "a mutant without tests" 1 $? "has no file, no old text or no tests"
printf 'fiel core/sum.txt\n' >"$list"
run --check
expect "a word that is none" 1 $? "list.txt:1: fiel is no word of this list"

printf 'file core/sum.txt\nold answer 5\nnew answer 6\ntests t\n' >"$list"
sed -i 's/answer 5/answer  5/;s/3$/3 /' "$tree/core/sum.txt"
sed -i 's/old answer 5/old sum/' "$list"
run
expect "tests that are red by themselves" 1 $? "without any mutant the tests do not pass"

[ $failures = 0 ] && echo "all as expected"
