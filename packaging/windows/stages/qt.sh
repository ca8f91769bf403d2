# shellcheck shell=bash
# The toolkit for Windows, built from the source of the version that is installed here: its code
# generators run here, so both must be of one version.

# shellcheck disable=SC2154 # $work and $here come from the script that sources this one.
qt_installed=$work/qt/installed

qt_off=(network sql dbus xml concurrent testlib vulkan tabletevent cpp_winrt icu glib
    zstd fontconfig jpeg gif direct2d1_1 system_zlib system_pcre2 system_freetype system_harfbuzz
    system_png system_doubleconversion)

stage_qt() {
    local version made_from
    version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
    made_from="$version ${qt_off[*]}"
    if [[ $(cat "$qt_installed/made-from" 2>/dev/null) == "$made_from" ]]; then
        echo "The toolkit is built already."
        return
    fi
    [[ $(cat "$work/qt/fetched" 2>/dev/null) == "$version" ]] || fetch_qt "$version"
    configure_qt
    cmake --build "$work/qt/build" --parallel "$(jobs_here)" >"$work/qt/build.log" 2>&1 ||
        { tail -n 40 "$work/qt/build.log" && die "The toolkit does not build."; }
    cmake --install "$work/qt/build" --strip >"$work/qt/install.log"
    echo "$made_from" >"$qt_installed/made-from"
}

# Reads the system's own list of servers as one of source packages, beside the system's lists.
fetch_qt() {
    local version=$1 apt=$work/apt options list
    rm -rf "$apt" "$work/qt"
    mkdir -p "$apt/sources" "$apt/lists/partial" "$work/qt/download"
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ ! -f $list ]] ||
            sed -n 's/^deb[[:space:]]/deb-src /p' "$list" >"$apt/sources/$(basename "$list" .list).list"
    done
    for list in /etc/apt/sources.list.d/*.sources; do
        [[ ! -f $list ]] ||
            sed 's/^Types:.*/Types: deb-src/' "$list" >"$apt/sources/$(basename "$list")"
    done
    options=(-o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$apt/sources"
        -o "Dir::State::Lists=$apt/lists" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" -qq update
    (
        cd "$work/qt/download" || exit
        apt-get "${options[@]}" -qq source "qt6-base=$version"
        mv ./*/ ../source
    )
    echo "$version" >"$work/qt/fetched"
}

configure_qt() {
    local feature libraries options=()
    libraries=/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)
    for feature in "${qt_off[@]}"; do
        options+=("-DFEATURE_$feature=OFF")
    done
    rm -rf "$work/qt/build" "$qt_installed"
    cmake -S "$work/qt/source" -B "$work/qt/build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
        -DCMAKE_C_FLAGS_RELEASE="-O2 -DNDEBUG" -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
        -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
        -DCMAKE_INSTALL_PREFIX="$qt_installed" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$libraries/cmake" \
        -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DFEATURE_direct2d=ON -DINPUT_opengl=no \
        "${options[@]}" \
        >"$work/qt/configure.log" 2>&1 ||
        { tail -n 40 "$work/qt/configure.log" && die "The toolkit cannot be configured."; }
}
