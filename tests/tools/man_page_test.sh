#!/bin/bash
# A manual page tells the options that its program tells with --help, no more and no less. Of a
# program with commands each has a subsection, which is held against the help of that command.
# Usage: man_page_test.sh PROGRAM PAGE
set -u
program=$1
page=$2
name=${page##*/}
bad=0
complain() {
    echo "$name: $*"
    bad=1
}

# The options that a text names, --help aside, which every program has.
options_in() {
    grep -oP '(?<![\w-])--?[a-z][a-z-]*' | grep -vxe --help -e -h | sort -u
}
# The page as it is read, as far as this test needs it.
plain() {
    sed -e 's/\\f[BIPR]//g' -e 's/\\-/-/g' "$page"
}
hold() { # WHAT OPTIONS-OF-THE-HELP OPTIONS-OF-THE-PAGE
    local option
    while read -r option; do
        case $option in
        '<'*) complain "$1: does not tell ${option#? }" ;;
        '>'*) complain "$1: tells ${option#? }, which there is not" ;;
        esac
    done < <(diff <(echo "$2") <(echo "$3") | grep '[a-z]$')
}

help=$("$program" --help) && [[ $help == "usage: ${name%.1}"* ]] ||
    complain "${program##*/} --help says: $help"
commands=$(sed -n "s/^  ${name%.1} \([a-z]*\) .*/\1/p" <<<"$help")
hold "commands" "$(sort <<<"$commands")" "$(plain | sed -n 's/^\.SS "\?\([a-z]*\).*/\1/p' | sort)"
if [ -n "$commands" ]; then
    for command in $commands; do
        section=$(plain | sed -n "/^\.SS \"\?$command /,/^\.S/p" | sed '1!{/^\.S/d}')
        hold "$command" "$("$program" "$command" --help | options_in)" "$(options_in <<<"$section")"
    done
else
    hold "options" "$(options_in <<<"$help")" "$(plain | options_in)"
fi
plain | grep -q -- --help || complain "does not tell --help"
# What an option may be set to is a word a line.
for word in $(sed -n 's/^  *\([a-z][a-z-]*\)\(=[A-Z]*\)\?$/\1/p' <<<"$help"); do
    plain | grep -qP "(?<![\w-])$word(?![\w-])" || complain "does not tell $word"
done
exit $bad
