# What script/windows hands to a user: the folder of the program, as a zip and as an installer, and the
# proof of both under wine.

# What Qt's source says of the works of others in it, in the file $qt_notices; made once.
have_qt_notices() {
    local prefix part
    prefix=$(qt_prefix) || return 1
    qt_notices=$prefix.notices.txt
    [ ! -s "$qt_notices" ] || return 0
    echo "Fetching what Qt holds of others"
    part=$prefix.notices.part
    mkdir -p "$part" && fetch_qt_source "$part" &&
        packaging/windows/qt-notices "$part/source" >"$part/notices.txt" &&
        mv "$part/notices.txt" "$qt_notices" && rm -rf "$part"
}

# A program or a library, without what only a debugger reads. $1 -> $2
put_code() {
    install -D -m 755 "$1" "$2" && x86_64-w64-mingw32-strip --strip-unneeded "$2"
}

# A text with the ends of lines that every editor of Windows knows.
put_text() {
    mkdir -p "$(dirname "$2")" && sed 's/\r*$/\r/' "$1" >"$2"
}

# The folder of the program, as a user gets it: $1. The build is $2.
make_folder() {
    local folder=$1 build=$2 qt name gcc=/usr/lib/gcc/x86_64-w64-mingw32/12-posix text
    qt=$(qt_prefix) || return 1
    rm -rf "$folder" && mkdir -p "$folder" || return 1
    put_code "$build/kvo.exe" "$folder/kvo.exe" &&
        put_code "$build/tools/kvo-cli.exe" "$folder/kvo-cli.exe" &&
        put_code "$build/tools/kvo_replay.exe" "$folder/kvo_replay.exe" || return 1
    for name in Core Gui Widgets PrintSupport; do
        put_code "$qt/bin/Qt6$name.dll" "$folder/Qt6$name.dll" || return 1
    done
    put_code "$qt/plugins/platforms/qwindows.dll" "$folder/platforms/qwindows.dll" &&
        put_code "$gcc/libstdc++-6.dll" "$folder/libstdc++-6.dll" &&
        put_code "$gcc/libgcc_s_seh-1.dll" "$folder/libgcc_s_seh-1.dll" &&
        put_code /usr/x86_64-w64-mingw32/lib/libwinpthread-1.dll "$folder/libwinpthread-1.dll" ||
        return 1

    # Where Qt looks for what a program shares with its user.
    for name in Kvo.Cfg Kvocar.dll Kvobike.dll; do
        install -D -m 644 "packaging/$name" "$folder/data/kvo/$name" || return 1
    done
    for name in user-guide file-formats; do
        put_text "docs/$name.md" "$folder/guide/$name.md" || return 1
    done
    mkdir -p "$folder/guide/pictures" && cp docs/pictures/*.png "$folder/guide/pictures/" || return 1

    notices_of windows 'licences\\\1.txt' |
        sed "s|@QT_VERSION@|$(qt_version)|" >"$scratch/notices" || return 1
    put_text "$scratch/notices" "$folder/notices.txt" || return 1
    for text in LGPL-3 GPL-3 CC0-1.0; do
        put_text "/usr/share/common-licenses/$text" "$folder/licences/$text.txt" || return 1
    done
    put_text "$qt_notices" "$folder/licences/Qt-holds.txt" &&
        put_text /usr/share/doc/gcc-mingw-w64-base/copyright "$folder/licences/gcc.txt" &&
        put_text /usr/share/doc/mingw-w64-common/copyright "$folder/licences/mingw-w64.txt"
}

# Each library that a program of the folder $1 asks for is in it, with its notice, or is one of
# Windows' own.
check_libraries() {
    local file name missing=0
    while IFS= read -r file; do
        while IFS= read -r name; do
            case $name in api-ms-win-*) continue ;; esac
            if [ -e "$1/$name" ]; then
                grep -qF "$name" "$1/notices.txt" && continue
                echo "$name has no notice"
            fi
            [ -e "/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/${name,,}" ] && continue
            [ -e "$1/$name" ] || echo "${file#"$1"/} asks for $name, which is not there"
            missing=1
        done < <(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/^\tDLL Name: //p')
    done < <(find "$1" -path "$1/data" -prune -o \( -name '*.exe' -o -name '*.dll' \) -print)
    [ $missing = 0 ]
}

# The lines of the installer that put each file of the folder $1, and those that take it off again,
# into the folder $2.
list_files() {
    local path inner
    : >"$2/files.nsh"
    : >"$2/drop.nsh"
    while IFS= read -r path; do
        inner=${path%/*}
        [ "$inner" != "$path" ] || inner=
        printf 'SetOutPath "$INSTDIR%s"\nFile "%s"\n' "${inner:+\\${inner//\//\\}}" "$1/$path" \
            >>"$2/files.nsh"
        printf 'Delete "$INSTDIR\\%s"\n' "${path//\//\\}" >>"$2/drop.nsh"
    done < <(cd "$1" && find . -type f -printf '%P\n' | LC_ALL=C sort)
    while IFS= read -r path; do
        printf 'RMDir "$INSTDIR\\%s"\n' "${path//\//\\}" >>"$2/drop.nsh"
    done < <(cd "$1" && find . -mindepth 1 -depth -type d -printf '%P\n')
}

# The folder, the zip and the installer, in build/windows.
make_installer() {
    local build=$1 name
    version=$(sed -n 's/^project(kvo VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    name=Kvo-$version-windows
    folder=$root/build/windows/$name
    setup=$root/build/windows/$name-setup.exe
    make_folder "$folder" "$build" || fail "the folder of the program could not be made"
    check_libraries "$folder" || fail "the folder of the program is not whole"
    rm -f "$folder.zip" "$setup"
    (cd "$root/build/windows" && cmake -E tar cf "$name.zip" --format=zip "$name") ||
        fail "the zip could not be made"
    mkdir -p "$scratch/lists"
    list_files "$folder" "$scratch/lists"
    (cd packaging/windows && makensis -V2 -WX "-DVERSION=$version" "-DLISTS=$scratch/lists" \
        "-DSIZE=$(du -sk --apparent-size "$folder" | cut -f 1)" "-DOUT=$setup" kvo.nsi) \
        >"$scratch/nsis" 2>&1 </dev/null || {
        cat "$scratch/nsis"
        fail "the installer could not be made"
    }
    ls -gGh "$folder.zip" "$setup" | cut -d ' ' -f 3-
}

# --- The proof

# A home for wine that nobody else has, on a display of its own.
begin_own_wine() {
    mkdir -p "$scratch/home"
    begin_display
    # wine takes the folders of a user from his home.
    export HOME=$scratch/home WINEPREFIX=$scratch/wine WINEDEBUG=-all \
        WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' LC_ALL=C.UTF-8
    setsid /usr/lib/wine/wineserver64 -p >/dev/null 2>&1 </dev/null
    /usr/lib/wine/wine64 wineboot --init >"$scratch/boot" 2>&1 </dev/null &&
        /usr/lib/wine/wine64 winecfg -v win10 >>"$scratch/boot" 2>&1 </dev/null || {
        tail "$scratch/boot"
        return 1
    }
    user=$WINEPREFIX/drive_c/users/$(id -un)
    # What every user of Windows has.
    mkdir -p "$user/AppData/Local/Programs"
    tests/windows/under_wine reg add 'HKCU\Software\Classes' /f >/dev/null 2>&1 &&
        tests/windows/under_wine reg add \
            'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall' /f >/dev/null 2>&1
}

end_own_wine() {
    end_wine
    end_display
}

# What is on the disk and in the user's part of the registry, into the file $1, without what is
# passing and what is wine's own.
take_stock() {
    (cd "$WINEPREFIX/drive_c" && find . -path ./windows/temp -prune -o -path '*/Temp/*' -prune -o \
        -print | sort) >"$1"
    rm -f "$WINEPREFIX/drive_c/stock.reg"
    tests/windows/under_wine regedit /E 'C:\stock.reg' HKEY_CURRENT_USER >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$WINEPREFIX/drive_c/stock.reg" | tr -d '\r' |
        awk '/^\[/ { own = index($0, "[HKEY_CURRENT_USER\\Software\\Wine") == 1 }
            !own && $0 != ""' >>"$1"
    rm -f "$WINEPREFIX/drive_c/stock.reg"
}

registry() { # KEY [VALUE]: what the user's key has, with [VALUE] only this
    tests/windows/under_wine reg query "HKCU\\$1" ${2:+/v "$2"} 2>/dev/null | tr -d '\r'
}

remembers() { grep -aqF "$1" "$user/AppData/Roaming/Kvo/Kvo.ini" 2>/dev/null; }
is_gone() { [ ! -e "$1" ]; }

# Installs silently into "$*", a path of Windows; nothing named: where it wants to. The installer takes
# all that stands behind /D= and no quotes around it, so that a path with blanks is several words.
install_kvo() {
    tests/windows/under_wine "$setup" /S ${1:+"/D=$1"} "${@:2}"
}

# What is in $1 is what was handed over, and its uninstaller.
is_whole() {
    diff -r --exclude=uninstall.exe "$folder" "$1" && [ -s "$1/uninstall.exe" ]
}

is_registered() {
    local path=$1 uninstall='Software\Microsoft\Windows\CurrentVersion\Uninstall\Kvo' minute count=0
    registry "$uninstall" DisplayVersion | grep -qF "$version" || return 1
    registry "$uninstall" QuietUninstallString | grep -qF "\"$path\\uninstall.exe\" /S" || return 1
    registry 'Software\Classes\Kvo.Run\shell\open\command' |
        grep -qF "\"$path\\kvo.exe\" --last-folder \"%1\"" || return 1
    for minute in 00 09 10 59; do
        registry "Software\\Classes\\.${minute}d\\OpenWithProgids" | grep -qF Kvo.Run || return 1
        # Nothing has been made its program.
        registry "Software\\Classes\\.${minute}d" | grep -q REG_SZ && return 1
        count=$((count + 1))
    done
    [ $count = 4 ] && is_gone "$user/AppData/Roaming/Kvo" &&
        [ -s "$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Kvo.lnk" ]
}

# Starts the installed program of the folder $1 with the words behind it; its number is in $opened.
open_kvo() {
    (cd "$1" && exec /usr/lib/wine/wine64 ./kvo.exe "${@:2}" >"$scratch/kvo" 2>&1 </dev/null) &
    opened=$!
}

close_kvo() {
    kill "$opened" 2>/dev/null
    wait "$opened" 2>/dev/null
    wait_for eval '! titles | grep -qF Kvo' || return 0
}

# With the program of the folder $1 open, a start for the run $2 finds the folder taken, goes to the
# first window, where the run opens, and ends.
show_in_first() {
    local first=$opened second
    open_kvo "$1" --last-folder "C:\\Jürgł runs\\Data\\$2"
    second=$opened opened=$first
    expect "a second start asks" wait_for shows_title '"Kvo"' || return 1
    expect "the second start ends" press_enter_till is_over "$second" &&
        expect "the first window shows its run" wait_for shows_title "$2"
}

# A user's first day with the program in $1, a path of this system: it asks for a folder; a run is
# opened as a click on it does, then the folder of the last time as a click on the program does.
use_program() {
    local run other
    if [ ! -d "$runs" ]; then
        mkdir -p "$runs" && build/core-only/tools/make_runs "$runs" && cp packaging/Kvo.Cfg "$runs/" ||
            return 1
    fi
    run=$(find "$runs/Data" -name '*.??d' | LC_ALL=C sort | head -n 1)
    other=$(find "$runs/Data" -name '*.??d' -printf '%f\n' | LC_ALL=C sort | tail -n 1)
    rm -f "$user/AppData/Roaming/Kvo/Kvo.ini"
    open_kvo "$1"
    expect "the first start offers a folder" wait_for shows_title "Welcome to Kvo" || return 1
    close_kvo
    open_kvo "$1" --last-folder "C:\\Jürgł runs\\Data\\${run##*/}"
    expect "the run was opened" wait_for remembers "${run##*/}" &&
        expect "its window is seen" wait_for shows_title "${run##*/}" &&
        expect "the program stays" kill -0 "$opened" || return 1
    if install_kvo; then
        echo "not so: an open program is left alone"
        return 1
    fi
    close_kvo
    # Without a word, in its own folder: as from the menu, in the folder of the last time.
    open_kvo "$1"
    expect "the last folder was opened" wait_for shows_title "DATA ACQUISITION SYSTEM" || return 1
    sleep 2
    expect "the program stays" kill -0 "$opened" && show_in_first "$1" "$other" || return 1
    close_kvo
    expect "the program's folder is as it was" is_whole "$1"
}

uninstall_kvo() {
    tests/windows/under_wine "$1/uninstall.exe" /S
    wait_for is_gone "$1/uninstall.exe" # a copy of it does the work
}

try_installer() {
    local place=$user/AppData/Local/Programs/Kvo other=$WINEPREFIX/drive_c/Apps/'Jürgł Kvo' named
    local runs=$WINEPREFIX/drive_c/'Jürgł runs'
    named="C:\\users\\$(id -un)\\AppData\\Local\\Programs\\Kvo"
    take_stock "$scratch/before"
    expect "it installs" install_kvo && expect "all is there" is_whole "$place" &&
        expect "Windows knows it" is_registered "$named" || return 1
    tests/windows/under_wine "$place/kvo-cli.exe" --help >"$scratch/help" 2>&1
    expect "kvo-cli starts" grep -q '^usage: kvo-cli' "$scratch/help" &&
        use_program "$place" || return 1
    # A newer version in another folder: the old one goes, the folder of the last time is known.
    expect "it installs elsewhere" install_kvo 'C:\Apps\Jürgł' Kvo &&
        expect "all is there" is_whole "$other" && expect "the old one is gone" is_gone "$place" &&
        expect "the last folder is known" remembers runs && use_program "$other" || return 1
    echo mine >"$other/mine.txt"
    cp -a "$runs" "$scratch/runs"
    uninstall_kvo "$other" || return 1
    expect "a user's own file stays" [ "$(cat "$other/mine.txt")" = mine ] &&
        expect "the runs stay" diff -r "$scratch/runs" "$runs" || return 1
    rm -r "$WINEPREFIX/drive_c/Apps" "$runs"
    take_stock "$scratch/after"
    expect "nothing is left" diff "$scratch/before" "$scratch/after"
}

installer() {
    local preset=${1:-windows-release} build
    build=$root/build/$preset
    build_qt
    install_packages build test windows windows-qt windows-display windows-installer
    make_scratch
    unset WINEPREFIX # a home of wine that is somebody's own
    trap 'end_own_wine; rm -rf "$scratch"' EXIT
    build_libraries || fail "the libraries could not be built"
    have_qt_notices || fail "what Qt holds of others could not be had"
    echo "Building for Windows"
    cmake --preset "$preset" "-DCMAKE_PREFIX_PATH=$libraries;$(qt_prefix)" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake >"$scratch/configure" 2>&1 ||
        { cat "$scratch/configure"; fail "the build for Windows could not be configured"; }
    cmake --build "$build" -j "$(nproc)" --target kvo kvo_cli kvo_replay 2>&1 |
        ninja_progress "$scratch/build"
    [ "${PIPESTATUS[0]}" = 0 ] || {
        grep -A 12 -m 2 'FAILED:' "$scratch/build"
        fail "the build for Windows failed"
    }
    make_installer "$build"
    build_preset core-only --target make_runs >"$scratch/build" 2>&1 ||
        { tail -n 20 "$scratch/build"; fail "make_runs did not build"; }
    begin_own_wine || fail "wine could not be set up"
    try_installer || fail "not everything passed"
    echo "Installed, used and taken off again under wine."
}
