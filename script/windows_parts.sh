# The parts of script/windows, with the project's folder as $root and what is kept between two runs
# in $cache.

# Shows the steps of ninja's build as one line that moves, or as one line a tenth of them where
# nobody sits at a terminal. All that ninja says goes to the file $1.
ninja_progress() {
    local log=$1 line done all tenth=-1
    : >"$log"
    while IFS= read -r line; do
        printf '%s\n' "$line" >>"$log"
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
        done=${BASH_REMATCH[1]} all=${BASH_REMATCH[2]}
        if [ -t 1 ]; then
            printf '\r%d of %d steps ' "$done" "$all"
        elif [ $((done * 10 / all)) -gt "$tenth" ]; then
            tenth=$((done * 10 / all))
            echo "$done of $all steps"
        fi
    done
    [ ! -t 1 ] || echo
}

# Qt Base for Windows, of the version that the host's own tools have.
qt_version() {
    dpkg-query -W -f='${source:Version}' qt6-base-dev 2>/dev/null || fail "there is no qt6-base-dev"
}

qt_prefix() {
    local version
    version=$(qt_version) || exit 1
    echo "$cache/qt-mingw-${version%%[+~-]*}"
}

# Fetches the distribution's source of Qt Base into the folder $1 and takes it apart there as
# `source`. The lists of source packages are private, so the system's own stay as they are.
fetch_qt_source() {
    local work=$1 version
    version=$(qt_version) || return 1
    [ ! -d "$work/source" ] || return 0
    rm -rf "$work/fetch" && mkdir -p "$work/fetch/lists/partial" "$work/fetch/cache/archives/partial" ||
        return 1
    apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' | sort -u >"$work/fetch/sources.list"
    [ -s "$work/fetch/sources.list" ] || {
        echo "apt knows no repository; \"apt-get update\" as root tells it"
        return 1
    }
    local own=(-o "Dir::Etc::sourcelist=$work/fetch/sources.list" -o Dir::Etc::sourceparts=-
        -o "Dir::State::lists=$work/fetch/lists" -o "Dir::Cache=$work/fetch/cache"
        -o APT::Sandbox::User=)
    (
        cd "$work/fetch" && apt-get "${own[@]}" update -q &&
            apt-get "${own[@]}" source -q --download-only "qt6-base=$version" &&
            dpkg-source --no-check --extract qt6-base_*.dsc source
    ) >"$work/fetch.log" 2>&1 || {
        tail -n 20 "$work/fetch.log"
        return 1
    }
    mv "$work/fetch/source" "$work/source" && rm -rf "$work/fetch"
}

# What of Qt Base a program of windows needs, with the libraries that come with its source; the
# printing and the windows plugin link only where all of DirectX's writing is left out together.
configure_qt() {
    local work=$1 prefix=$2 options=() feature
    for feature in dbus icu vulkan network sql xml tabletevent glib concurrent direct2d direct2d1_1 \
        directwrite directwrite3 system_zlib system_pcre2 system_freetype system_harfbuzz \
        system_png system_jpeg system_doubleconversion system_libb2; do
        options+=("-DFEATURE_$feature=OFF")
    done
    cmake -G Ninja -S "$work/source" -B "$work/build" -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" "-DCMAKE_INSTALL_PREFIX=$prefix" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DBUILD_SHARED_LIBS=ON -DINPUT_opengl=no \
        -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF "${options[@]}" >"$work/configure.log" 2>&1 || {
        tail -n 30 "$work/configure.log"
        return 1
    }
}

# Leaves Qt whole at its place, or nothing there: what is built so far lies beside it, and the next
# call goes on from it.
build_qt() {
    install_packages build windows windows-qt
    local prefix work
    prefix=$(qt_prefix) || exit 1
    work=$prefix.part
    if [ -d "$prefix" ]; then
        echo "Qt for Windows is there: $prefix"
        return 0
    fi
    exec 8>"$prefix.lock"
    flock 8 # who comes second finds it done
    [ ! -d "$prefix" ] || return 0
    mkdir -p "$work" || fail "the folder $work cannot be made"
    echo "Fetching the source of Qt Base"
    fetch_qt_source "$work" || fail "the source of Qt Base could not be had"
    echo "Building Qt for Windows in $work; this takes half an hour, once"
    configure_qt "$work" "$prefix" || fail "Qt could not be configured"
    ninja -C "$work/build" 2>&1 | ninja_progress "$work/build.log"
    [ "${PIPESTATUS[0]}" = 0 ] || {
        grep -A 5 -m 3 'FAILED:' "$work/build.log"
        fail "Qt could not be built; all of it stands in $work/build.log"
    }
    rm -rf "$work/stage"
    DESTDIR=$work/stage cmake --install "$work/build" --strip >"$work/install.log" 2>&1 ||
        { tail "$work/install.log"; fail "Qt could not be installed"; }
    mv "$work/stage$prefix" "$prefix" && rm -rf "$work" "$prefix.lock"
    echo "Qt for Windows is there: $prefix"
}

# The libraries of the tests for Windows: made once of the sources that the distribution has of them.
build_libraries() {
    local key part
    key=$(dpkg-query -W -f='${Version}-' googletest nlohmann-json3-dev g++-mingw-w64-x86-64-posix |
        tr -c 'A-Za-z0-9.\n' -)
    libraries=$cache/mingw-libraries-${key%-}
    [ ! -d "$libraries" ] || return 0
    part=$(mktemp -d "$libraries.XXXXXX") || return 1
    echo "Building the libraries of the tests for Windows"
    cmake -G Ninja -S /usr/src/googletest -B "$part/build" -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" "-DCMAKE_INSTALL_PREFIX=$part/stage" \
        -DBUILD_GMOCK=OFF >"$part/log" 2>&1 &&
        cmake --build "$part/build" --target install >>"$part/log" 2>&1 &&
        mkdir -p "$part/stage/share/cmake" &&
        cp -r /usr/include/nlohmann "$part/stage/include/" &&
        cp -r /usr/share/cmake/nlohmann_json "$part/stage/share/cmake/" || {
        tail -n 20 "$part/log"
        return 1
    }
    mv "$part/stage" "$libraries" && rm -rf "$part"
}

# From here to the end of the script wine has a home of its own in the cache, for one script at a
# time, and one server for all programs, which would else be started anew for each.
begin_wine() {
    local version
    version=$(dpkg-query -W -f='${Version}' wine64 | tr -c 'A-Za-z0-9.\n' -)
    export WINEPREFIX=$cache/wine-$version WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' \
        LC_ALL=C.UTF-8
    exec 7>"$WINEPREFIX.lock"
    flock 7
    if [ ! -e "$WINEPREFIX/whole" ]; then
        echo "Making a home for wine"
        rm -rf "$WINEPREFIX"
        /usr/lib/wine/wine64 wineboot --init >"$scratch/wine" 2>&1 </dev/null 7>&- &&
            /usr/lib/wine/wine64 winecfg -v win10 >>"$scratch/wine" 2>&1 </dev/null 7>&- || {
            tail -n 20 "$scratch/wine"
            return 1
        }
        /usr/lib/wine/wineserver64 -w >/dev/null 2>&1 </dev/null
        touch "$WINEPREFIX/whole"
    fi
    setsid /usr/lib/wine/wineserver64 -p >/dev/null 2>&1 </dev/null 7>&- &
    wait $!
    # What wine starts beside the first program makes its ports anew, over a link that is there.
    /usr/lib/wine/wine64 cmd /c exit >/dev/null 2>&1 </dev/null 7>&-
    sleep 2
}

end_wine() {
    [ -n "${WINEPREFIX:-}" ] || return 0
    /usr/lib/wine/wineserver64 -k >/dev/null 2>&1 </dev/null
}

# Each line of the list of skipped tests names a test that there is; tells the list.
tell_skipped() {
    local build=$1 program tests why wrong=0 path
    echo "Skipped under wine:"
    while IFS='|' read -r program tests why; do
        case $program in '' | '#'*) continue ;; esac
        program=${program%% *} tests=${tests# } tests=${tests%% *}
        path=$(find "$build" -name "$program.exe" | head -n 1)
        [ -n "$path" ] || continue # of another build
        tests/windows/under_wine "$path" "--gtest_list_tests" "--gtest_filter=$tests" \
            >"$scratch/listed" 2>/dev/null </dev/null
        grep -q '^  ' "$scratch/listed" || {
            echo "  tests/windows/skipped.txt: $program has no test $tests"
            wrong=1
        }
        echo "  $tests:$why"
    done <tests/windows/skipped.txt
    return $wrong
}

# kvo-cli "$@" in the folder $name, on this system and under wine: what they tell must be the same.
# Paths are told with the system's own root and separators; what is exported is compared as it is.
compare_cli() {
    (cd "$scratch/linux" && "$linux/tools/kvo-cli" "$@") >"$scratch/here" 2>&1
    (cd "$scratch/windows" && "$root/tests/windows/under_wine" "$windows/tools/kvo-cli.exe" "$@") \
        >"$scratch/there" 2>&1
    [ "$1" = export ] || sed -i -e 's#Z:##g' -e 's#\\\\#\\#g' -e 's#\\#/#g' \
        -e "s#$scratch/windows#$scratch/linux#g" "$scratch/there"
    cmp "$scratch/here" "$scratch/there" && return 0
    diff "$scratch/here" "$scratch/there" | head -n 6
    echo "kvo-cli $* does not tell what it tells on this system"
    return 1
}

# What the tools write and tell, under wine as on this system. The folder's name is in letters of
# three scripts.
compare_tools() {
    local linux=$1 windows=$2 name="Jürgł Übung ガレージ" run exported=0
    mkdir -p "$scratch/linux/$name" "$scratch/windows/$name" || return 1
    "$linux/tools/make_runs" "$scratch/linux/$name" || return 1
    tests/windows/under_wine "$windows/tools/make_runs.exe" "$scratch/windows/$name" || return 1
    diff -r "$scratch/linux/$name" "$scratch/windows/$name" || {
        echo "make_runs does not write what it writes on this system"
        return 1
    }
    for run in "$scratch/linux/$name"/Data/*d; do
        run=$name/Data/${run##*/}
        compare_cli export --csv -o - "$run" &&
            compare_cli export --csv --decimal , --from 0.5 --to 2 -o - "$run" &&
            compare_cli stats --json "$run" && compare_cli info "$run" || return 1
        exported=$((exported + 1))
    done
    [ $exported -gt 0 ] || return 1
    compare_cli list "$name" && compare_cli list --json "$name" && compare_cli check "$name" &&
        compare_cli check --json "$name" && compare_cli info --folder "$name" "no such run" &&
        compare_cli list "$name/none" && compare_cli dance &&
        compare_cli export --csv -o "$name/ガレージ.csv" "$run" || return 1
    cmp "$scratch/linux/$name/ガレージ.csv" "$scratch/windows/$name/ガレージ.csv" || return 1
    echo "make_runs and kvo-cli: the same as on this system, byte for byte, in the folder $name"
}

# A logger of data type $2 in software at the other end of the port $1 of wine, "com7", with the fault
# $3 where one is given; ends it where the rest of the words have been run.
with_logger() {
    local place=$WINEPREFIX/dosdevices/$1 type=$2 fault=$3 logger status
    shift 3
    rm -f "$place"
    "$root/build/core-only/tools/kvo-simulator" --type "$type" --unpaced --link "$place" \
        ${fault:+--fault "$fault"} >"$scratch/logger" 2>&1 </dev/null 7>&- &
    logger=$!
    for ((i = 0; i < 100; i++)); do
        [ -e "$place" ] && break
        sleep 0.1
    done
    KVO_COM_TYPE=$type KVO_COM_PORT=7 KVO_COM_CUT=${fault:+1} "$@"
    status=$?
    kill "$logger" 2>/dev/null
    wait "$logger" 2>/dev/null
    rm -f "$place"
    return $status
}

# A download over the serial port of Windows, without a window: the run must be the one that comes
# over a line in memory, and a cable that is pulled is told.
try_port() {
    local program=$root/build/windows-core/tests/windows_tests.exe
    with_logger com7 25 "" tests/windows/under_wine "$program" >"$scratch/port" 2>&1 &&
        with_logger com7 32 "" tests/windows/under_wine "$program" >"$scratch/port" 2>&1 &&
        with_logger com7 25 hangup-at=3000 tests/windows/under_wine "$program" >"$scratch/port" 2>&1 || {
        cat "$scratch/port"
        return 1
    }
    echo "Downloads over the serial port: the same runs as on this system"
}

# Configures the preset $1 with the libraries in $2 and the options that follow, and builds it.
cross_build() {
    local preset=$1 prefixes=$2
    shift 2
    echo "Building for Windows"
    cmake --preset "$preset" "-DCMAKE_PREFIX_PATH=$prefixes" "$@" >"$scratch/configure" 2>&1 ||
        { cat "$scratch/configure"; fail "the build for Windows could not be configured"; }
    cmake --build --preset "$preset" -j "$(nproc)" 2>&1 | ninja_progress "$scratch/build"
    [ "${PIPESTATUS[0]}" = 0 ] || {
        grep -A 12 -m 2 'FAILED:' "$scratch/build"
        fail "the build for Windows failed"
    }
}

# Everything below the forms: built for Windows and run under wine.
try_core() {
    install_packages build test windows
    make_scratch
    trap 'end_wine; rm -rf "$scratch"' EXIT
    unset DISPLAY WAYLAND_DISPLAY
    build_libraries || fail "the libraries of the tests could not be built"
    cross_build windows-core "$libraries"
    echo "Building the tools for this system"
    build_preset core-only --target make_runs kvo_cli logger_simulator >"$scratch/build" 2>&1 ||
        { tail -n 20 "$scratch/build"; fail "the tools did not build"; }
    begin_wine || fail "wine could not be set up"
    local bad=0
    ctest --preset windows-core --parallel "$(nproc)" || bad=1
    tell_skipped build/windows-core || bad=1
    try_port || bad=1
    compare_tools "$root/build/core-only" "$root/build/windows-core" || bad=1
    times >"$scratch/times"
    echo "Processor time, user and system: $(tail -n 1 "$scratch/times")"
    [ $bad = 0 ] || fail "not everything passed"
    echo "The floors without Qt pass under wine."
}

# Qt's options off-screen, on the one screen of all form tests. The name of its file is relative: a
# colon would end it.
offscreen=offscreen:configfile=tests/offscreen.json

# One form test under wine; what it said is in $scratch/form.NAME. A test of which some functions say
# nothing there is given the others.
form_test() {
    local name=$1 functions=() skipped
    skipped=$(awk -F' *[|] *' -v test="$name" '
        $1 == "form_tests" && sub("^" test ":", "", $2) { print $2 }' tests/windows/skipped.txt)
    if [ -n "$skipped" ]; then
        mapfile -t functions < <(tests/windows/under_wine "$app/tests/form_tests.exe" "$name" \
            -platform "$offscreen" -functions | tr -d '\r' | sed -n 's/()$//p' |
            grep -vxF "$skipped")
        [ ${#functions[@]} -gt 0 ] || return 1
    fi
    timeout 600 tests/windows/under_wine "$app/tests/form_tests.exe" "$name" "${functions[@]}" \
        -platform "$offscreen" -o "$scratch/form.$name,txt" >"$scratch/form.$name.out" 2>&1
}

# All form tests, two at a time; names those that failed, and tells those that say nothing there.
try_forms() {
    local name wrong=0
    tests/windows/under_wine "$app/tests/form_tests.exe" >"$scratch/usage" 2>&1
    tr -d '\r' <"$scratch/usage" | sed -n 's/^  //p' >"$scratch/names"
    [ -s "$scratch/names" ] || {
        cat "$scratch/usage"
        return 1
    }
    awk -F' *[|] *' '$1 == "form_tests" { print $2 }' tests/windows/skipped.txt >"$scratch/left.out"
    grep -vxFf "$scratch/left.out" "$scratch/names" >"$scratch/run"
    export app offscreen scratch
    export -f form_test
    xargs -P "$(nproc)" -I NAME bash -c \
        'form_test NAME && echo "ok      NAME" || echo "FAILED  NAME"' <"$scratch/run" |
        tee "$scratch/results"
    while read -r name; do
        echo "== $name"
        grep -A 4 -E '^(FAIL!|QFATAL|XPASS)' "$scratch/form.$name" ||
            tail -n 5 "$scratch/form.$name.out"
        wrong=$((wrong + 1))
    done < <(sed -n 's/^FAILED  //p' "$scratch/results")
    echo "Skipped under wine:"
    awk -F' *[|] *' '$1 == "form_tests" { print "  " $2 ": " $3 }' tests/windows/skipped.txt
    echo "$(grep -c '^ok' "$scratch/results") form tests passed, $wrong failed"
    [ $wrong = 0 ]
}

# The forms driven through a whole download over the serial port: the same drive on this system, with
# a logger of the same run, leaves the same run file.
try_drive() {
    local folder logger here there
    for folder in here there; do
        mkdir -p "$scratch/drive/$folder"
        cp packaging/Kvo.Cfg "$scratch/drive/$folder/"
    done
    build/core-only/tools/kvo-simulator --type 32 --unpaced \
        --link "$scratch/drive/here/COM1" >"$scratch/logger" 2>&1 </dev/null 7>&- &
    logger=$!
    sleep 1
    build/dev/tools/demo_drive "$scratch/drive/here" >"$scratch/drive.here" 2>&1
    here=$?
    kill "$logger" 2>/dev/null
    wait "$logger" 2>/dev/null
    with_logger com1 32 "" tests/windows/under_wine "$app/tools/demo_drive.exe" \
        "$scratch/drive/there" >"$scratch/drive.there" 2>&1
    there=$?
    [ $here = 0 ] && [ $there = 0 ] || {
        tail -n 8 "$scratch/drive.here" "$scratch/drive.there"
        return 1
    }
    here=$(echo "$scratch"/drive/here/Data/*.*d) there=$(echo "$scratch"/drive/there/Data/*.*d)
    cmp "$here" "$there" || return 1
    cat "$scratch/drive.there"
    echo "The forms download the same run as on this system: ${there##*/}"
    rm -r "$scratch/drive/there/Data"
    with_logger com1 32 hangup-at=3000 tests/windows/under_wine "$app/tools/demo_drive.exe" \
        "$scratch/drive/there" >"$scratch/drive.there" 2>&1
    grep -q 'Download Error' "$scratch/drive.there" && [ ! -e "$scratch/drive/there/Data" ] || {
        cat "$scratch/drive.there"
        return 1
    }
    echo "A cable that is pulled in the middle is told, and leaves no run"
}

# From the menu to the run in the graph with the folder $1: Enter at the date, at Start Download, at
# each question and at the title that is offered.
press_through_download() {
    local program done=0
    /usr/lib/wine/wine64 "$app/kvo.exe" "Z:${1//\//\\}" >"$scratch/kvo" 2>&1 </dev/null 7>&- &
    program=$!
    if expect "kvo.exe starts" wait_for shows_title "DATA ACQUISITION SYSTEM"; then
        sleep 2
        xdotool key alt+c
        sleep 1
        xdotool key d
        sleep 1
        expect "the run is in the graph" press_enter_till shows_title " Run: 1 " && done=1
    fi
    kill "$program" 2>/dev/null
    wait "$program" 2>/dev/null
    [ $done = 1 ]
}

# The program itself on a display, by its keys alone: the run file is that of the drive on this system.
try_keys() {
    local folder=$scratch/drive/keys status
    mkdir -p "$folder" && cp packaging/Kvo.Cfg "$folder/" || return 1
    # Where wine's own desktop is, its programs are.
    end_wine
    begin_display
    begin_wine || return 1
    with_logger com1 32 "" press_through_download "$folder"
    status=$?
    end_display
    [ $status = 0 ] && cmp "$scratch"/drive/here/Data/*.*d "$folder"/Data/*.*d || return 1
    echo "kvo.exe downloads the same run on a display, by keys alone"
}

# Where the system of a program's own folder is not, wine finds its libraries.
windows_path() {
    local folder path=
    for folder in "$(qt_prefix)/bin" /usr/lib/gcc/x86_64-w64-mingw32/12-posix \
        /usr/x86_64-w64-mingw32/lib; do
        path+="Z:${folder//\//\\};"
    done
    echo "${path%;}"
}

# The program with its windows: built for Windows and driven under wine, off-screen.
try_app() {
    build_qt
    install_packages build test windows windows-display
    make_scratch
    trap 'end_wine; end_display; rm -rf "$scratch"' EXIT
    unset DISPLAY WAYLAND_DISPLAY
    build_libraries || fail "the libraries of the tests could not be built"
    app=$root/build/windows-app
    cross_build windows-app "$libraries;$(qt_prefix)" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
    echo "Building the same drive for this system"
    build_preset core-only --target logger_simulator >"$scratch/build" 2>&1 &&
        build_preset dev --target demo_drive >"$scratch/build" 2>&1 ||
        { tail -n 20 "$scratch/build"; fail "the drive did not build"; }
    begin_wine || fail "wine could not be set up"
    # The fonts of the tests: off-screen Qt looks for them beside itself.
    mkdir -p "$(qt_prefix)/lib/fonts" &&
        cp /usr/share/fonts/truetype/dejavu/*.ttf "$(qt_prefix)/lib/fonts/" || fail "there are no fonts"
    export WINEPATH
    WINEPATH=$(windows_path)
    local bad=0
    try_forms || bad=1
    tests/windows/under_wine "$app/tests/vectors/kvo_vectors.exe" tests/vectors || bad=1
    try_drive && try_keys || bad=1
    [ $bad = 0 ] || fail "not everything passed"
    echo "The windows pass under wine."
}
