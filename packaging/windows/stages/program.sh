# shellcheck shell=bash
# The program for Windows, and the tests that need no Linux.

# shellcheck disable=SC2154 # $work and $here come from the script that sources this one.
program_build=$work/program
program_bin=$program_build/bin
googletest_installed=$work/googletest/installed

windows_tests=(core_tests reading_tests metronome_tests composer_tests eartraining_tests
    library_tests desktop_tests manual_tests)

stage_program() {
    build_googletest
    build_host_program
    # shellcheck disable=SC2154 # $qt_installed comes from the stage that builds the toolkit.
    cmake -S . -B "$program_build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$qt_installed/lib/cmake/Qt6/qt.toolchain.cmake" \
        -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake" \
        -DCMAKE_FIND_ROOT_PATH="$qt_installed;$googletest_installed" \
        -DCMAKE_BUILD_TYPE=Release -DCANTAVISTA_WERROR=ON \
        -DCANTAVISTA_PRECOMPILE=ON -DCMAKE_CXX_FLAGS=-fpch-preprocess \
        -DCANTAVISTA_HOST_PROGRAM="$work/host/bin/cantavista" >"$work/program.log"
    cmake --build "$program_build" --parallel "$(jobs_here)" \
        --target program_folder "${windows_tests[@]}"
    gather_libraries
}

build_googletest() {
    [[ ! -d $googletest_installed/lib ]] || return 0
    cmake -S /usr/src/googletest -B "$work/googletest/build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
        -DCMAKE_INSTALL_PREFIX="$googletest_installed" >"$work/googletest.log"
    cmake --build "$work/googletest/build" --parallel "$(jobs_here)" --target install \
        >>"$work/googletest.log"
}

# The program that makes the sounds of its melodies runs here.
build_host_program() {
    cmake -S . -B "$work/host" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCANTAVISTA_TESTS=OFF \
        -DCANTAVISTA_HELP_CHM=OFF >"$work/host.log"
    cmake --build "$work/host" --parallel "$(jobs_here)" --target cantavista >>"$work/host.log"
}

# Puts what the program loads beside it, as it will stand at the user's.
gather_libraries() {
    local library compiler=x86_64-w64-mingw32-g++-posix plugins=$qt_installed/plugins
    for library in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
        cp -u "$($compiler -print-file-name=$library)" "$program_bin/"
    done
    cp -u "$qt_installed"/bin/Qt6{Core,Gui,PrintSupport,Widgets}.dll "$program_bin/"
    mkdir -p "$program_bin"/plugins/{platforms,imageformats} "$program_bin/translations"
    cp -u "$plugins"/platforms/q{windows,offscreen}.dll "$program_bin/plugins/platforms/"
    cp -u "$plugins/imageformats/qico.dll" "$program_bin/plugins/imageformats/"
    cp -u /usr/share/qt6/translations/qtbase_it.qm "$program_bin/translations/"
    printf '[Paths]\nPrefix = .\n' >"$program_bin/qt.conf"
}
