# shellcheck shell=bash
# The zip and the installer.

# shellcheck disable=SC2154 # The variables come from the scripts that source this one.
stage_dist() {
    local version tree=$work/dist/Cantavista
    version=$(sed -n 's/^project(cantavista VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    rm -rf "$work/dist"
    mkdir -p "$tree"
    cp -r "$program_bin"/{cantavista.exe,*.dll,qt.conf,plugins,modules,translations,note,Melodie,aiuto} \
        "$tree/"
    rm "$tree/plugins/platforms/qoffscreen.dll"
    [[ ! -f $program_bin/cantavista.chm ]] || cp "$program_bin/cantavista.chm" "$tree/"
    find "$tree" -name '*.dll' -exec x86_64-w64-mingw32-strip {} +
    x86_64-w64-mingw32-strip "$tree/cantavista.exe"
    sed 's/$/\r/' "$here/LEGGIMI.txt" >"$tree/LEGGIMI.txt"
    gather_licences "$tree/licenze"

    (cd "$work/dist" && zip -q -9 -r "cantavista-$version-windows.zip" Cantavista)
    # shellcheck disable=SC2016 # The installer's own variable.
    find "$tree/Melodie/Esempi" -name '*.mel' \
        -printf '  Delete "$INSTDIR\\Melodie\\Esempi\\%f"\n' >"$work/dist/examples.nsh"
    makensis -V2 -NOCD -DVERSION="$version" -DTREE="$tree" \
        -DEXAMPLES="$work/dist/examples.nsh" \
        -DICON="$program_build/src/platform/windows/cantavista.ico" \
        -DOUTPUT="$work/dist/cantavista-$version-setup.exe" "$here/installer.nsi"
    tests/windows/installer_check "$work/dist/cantavista-$version-setup.exe" "$work/check-installer" |
        tee "$work/report-installer.txt"
    (cd "$work/dist" && sha256sum ./*.zip ./*.exe && du -h ./*.zip ./*.exe && du -sh Cantavista)
}

gather_licences() {
    local folder=$1 file
    mkdir -p "$folder"
    cp LICENSE "$folder/Cantavista.txt"
    cp assets/fonts/bravura/LICENSE* "$folder/Bravura-OFL.txt"
    cat /usr/share/doc/timgm6mb-soundfont/copyright /usr/share/common-licenses/GPL-2 \
        >"$folder/TimGM6mb.txt"
    cp /usr/share/doc/libz-mingw-w64-dev/copyright "$folder/zlib.txt"
    cp "$work/qt/source/LICENSES/LGPL-3.0-only.txt" "$folder/Qt-LGPL-3.0.txt"
    cp "$work/qt/source/LICENSES/GPL-3.0-only.txt" "$folder/Qt-GPL-3.0.txt"
    cp "$work/qt/source/debian/copyright" "$folder/Qt-e-sue-parti.txt"
    cp /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright "$folder/gcc.txt"
    cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$folder/mingw-w64.txt"
    cp "$here/licenze.txt" "$folder/LEGGIMI.txt"
    for file in "$folder"/*.txt; do
        sed -i 's/\r*$/\r/' "$file"
    done
}
