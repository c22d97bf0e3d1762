#!/bin/bash
# What the package tells a desktop and a reader fits the programs that are in it.
# Usage: package_files_test.sh TREE KVO PROGRAM...
set -u
tree=$1
kvo=$2
shift 2
folder=$tree/packaging/debian
root=$tree
. "$tree/script/lib.sh"
notices=$(mktemp)
trap 'rm -f "$notices"' EXIT
notices_of debian '/usr/share/common-licenses/\1' >"$notices"
bad=0
complain() {
    echo "$*"
    bad=1
}

# The file type catches the names that a download gives, and nothing else of a folder of runs.
globs=$(sed -n 's/.*<glob pattern="\(.*\)"\/>.*/\1/p' "$folder/kvo.xml")
[ -n "$globs" ] || complain "kvo.xml has no pattern"
is_run() {
    local glob
    for glob in $globs; do
        # shellcheck disable=SC2053
        [[ $1 != $glob ]] || return 0
    done
    return 1
}
for name in 26111514.52d 00010100.00d 99123123.59d; do
    is_run $name || complain "the pattern of the file type does not catch $name"
done
for name in 26111514.52i 26111514.52m 26111514.52d.raw 26111514.5d notes.12d 26111514-52d x.d \
    26111514.52dd 126111514.52d 26311514.52d 26115514.52d 26111534.52d 26111514.62d 26111514.52; do
    ! is_run "$name" || complain "the pattern of the file type catches $name"
done
types=$(sed -n -e 's/.*<mime-type type="\(.*\)">.*/\1/p' "$folder/kvo.xml"
    sed -n -e 's/^MimeType=\(.*\);$/\1/p' "$folder/kvo.desktop"
    sed -n -e 's/.*<mediatype>\(.*\)<.*/\1/p' "$folder/kvo.metainfo.xml")
[ "$(wc -l <<<"$types")" = 3 ] && [ "$(sort -u <<<"$types" | wc -l)" = 1 ] ||
    complain "the file type has several names: $types"

# The entry of the menu starts the program with options that it has.
read -ra words < <(sed -n 's/^Exec=//p' "$folder/kvo.desktop")
[ "${words[0]}" = kvo ] || complain "the entry of the menu starts ${words[0]}"
help=$("$kvo" --help)
for word in "${words[@]:1}"; do
    [ "$word" = %f ] || grep -q -- "^  $word " <<<"$help" || complain "kvo has no $word"
done

# What is linked has its notice.
for program in "$kvo" "$@"; do
    while read -r library; do
        case $library in
        libQt6*) notice=${library#libQt6} && notice=${notice%%.*} ;;
        libstdc++.so* | libgcc_s.so*) notice="the runtime of the GNU compiler" ;;
        libc.so* | libm.so* | ld-linux*) notice="the GNU C library" ;;
        *) notice=$library ;;
        esac
        grep -qF "$notice" "$notices" ||
            complain "${program##*/} is linked with $library, which has no notice"
    done < <(LC_ALL=C readelf --dynamic --wide "$program" |
        sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
done
# And the libraries that consist of headers.
while read -r library; do
    case $library in
    Qt6 | Threads) ;;
    nlohmann_json) grep -q "JSON for Modern C++" "$notices" ||
        complain "$library has no notice" ;;
    *) complain "$library: it is to have a notice in packaging/notices.txt, and a row here" ;;
    esac
done < <(sed -n 's/^ *find_package(\([A-Za-z0-9_]*\).*/\1/p' "$tree/CMakeLists.txt")

# What they point to is there.
while read -r licence; do
    [ -s "$licence" ] || complain "the notices point to $licence, which is not there"
done < <(grep -o '/usr/share/common-licenses/[A-Z0-9.-]*[0-9]' "$notices")
! grep -q '@' <(grep -v '<.*@.*>' "$notices") || complain "the notices are not filled in"

# The licence is the owner's to choose: as long as the program says that there is none, so do these.
if grep -q "No licence has been granted yet" "$tree/mainwin/product.cpp"; then
    grep -qi "no licence has been granted yet" "$notices" ||
        complain "the notices do not say that there is no licence"
    grep -qi "no licence has been granted yet" "$tree/README.md" ||
        complain "README.md does not say that there is no licence"
fi
exit $bad
