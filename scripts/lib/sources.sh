# Sourced after common.sh by what builds Debian's sources in a way of its own. The build stays in a
# folder of the cache: an interrupted one resumes, a complete one is left alone.

# open_cache NAME WANT: sets home and prefix; returns when something is left to build, and nobody
# else builds it. Prints the prefix and leaves when WANT is there already.
open_cache() {
    home="$SFX_CACHE/$1"
    prefix="$home/qt"
    want="$2"
    leave_if_complete
    mkdir -p "$home"
    exec 9>"$home/lock"
    flock 9
    leave_if_complete
    if [ "$(cat "$home/building" 2>/dev/null)" != "$want" ]; then
        find "$home" -mindepth 1 -maxdepth 1 ! -name lock -exec rm -rf {} +
        printf '%s\n' "$want" >"$home/building"
    fi
    mkdir -p "$home/log"
    export LC_ALL=C.UTF-8
}

leave_if_complete() {
    if [ "$(cat "$home/complete" 2>/dev/null)" = "$want" ]; then
        printf '%s\n' "$prefix"
        exit 0
    fi
}

close_cache() {
    rm -rf "$home/src" "$home/build" "$home/apt"
    printf '%s\n' "$want" >"$home/complete"
    leave_if_complete
}

source_version() { dpkg-query -W -f '${source:Version}' "$1"; } # of an installed PACKAGE

# A list of its own: the machine's binary sources, asked for source packages.
deb_src() {
    local parts="$home/apt/parts" file
    mkdir -p "$parts" "$home/apt/lists/partial" "$home/apt/cache/archives/partial"
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -e "$file" ] && sed 's/^Types:.*/Types: deb-src/' "$file" >"$parts/$(basename "$file")"
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -e "$file" ] && sed -n 's/^deb\(-src\)\?[[:space:]]/deb-src /p' "$file" |
            sort -u >"$parts/$(basename "$file" .list).list"
    done
    return 0
}
apt() {
    apt-get -q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$home/apt/parts" \
        -o Dir::State::lists="$home/apt/lists" -o Dir::Cache="$home/apt/cache" \
        -o APT::Sandbox::User="$(id -un)" "$@"
}
fetch() { # NAME SOURCE VERSION: unpacks it into $home/src/NAME
    [ -e "$home/src/$1/.unpacked" ] && return 0
    step "fetching $2 $3" >&2
    if [ ! -e "$home/apt/updated" ]; then
        deb_src
        # Some other archive of the machine without sources is no reason to stop: the download decides.
        apt update >"$home/log/apt.log" 2>&1 || true
        touch "$home/apt/updated"
    fi
    mkdir -p "$home/src"
    rm -rf "${home:?}/src/$1"
    (
        cd "$home/src"
        quietly "$home/log/$1-fetch.log" apt --download-only source "$2=$3"
        # The file's name lacks the epoch.
        quietly "$home/log/$1-unpack.log" dpkg-source --no-check -x "$2_${3#*:}.dsc" "$1"
    )
    touch "$home/src/$1/.unpacked"
}

# built NAME: builds and installs $home/build/NAME
built() {
    quietly "$home/log/$1-build.log" nice cmake --build "$home/build/$1"
    quietly "$home/log/$1-install.log" cmake --install "$home/build/$1"
    touch "$home/build/$1/.done"
}
is_built() { [ -e "$home/build/$1/.done" ]; }

# Leaves out of Qt Multimedia's sources what takes more packages: shaders, which are for video, and
# resonance-audio, which is for 3D sound. Sets without_video to the options that go with it.
without_video() {
    cat >"$home/no-shaders.cmake" <<'C'
function(qt_internal_add_shaders target name)
    if(name STREQUAL "shaders")
        file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/no_shaders.cpp"
            "int qInitResources_shaders();\nint qInitResources_shaders() { return 1; }\n")
        target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/no_shaders.cpp")
    endif()
endfunction()
C
    sed -i 's/^find_package(Qt6 COMPONENTS ShaderTools)/# &/' "$1/src/multimedia/CMakeLists.txt"
    sed -i 's/^add_subdirectory(resonance-audio)/# &/' "$1/src/CMakeLists.txt"
    without_video=(-DCMAKE_PROJECT_QtMultimedia_INCLUDE="$home/no-shaders.cmake" -DFEATURE_spatialaudio=OFF
        -DFEATURE_alsa=OFF)
}

# What both builds of Qt have in common.
qt_common=(-G Ninja -DCMAKE_BUILD_TYPE=Release -DQT_HOST_PATH=/usr
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_DOCS=OFF)
qt_base_features=(-DBUILD_SHARED_LIBS=ON
    -DFEATURE_gui=ON -DFEATURE_network=ON -DFEATURE_concurrent=ON
    -DFEATURE_widgets=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_xml=OFF
    -DFEATURE_printsupport=OFF -DINPUT_opengl=no -DFEATURE_opengl=OFF -DFEATURE_vulkan=OFF
    -DFEATURE_accessibility=OFF -DFEATURE_glib=OFF -DFEATURE_icu=OFF -DFEATURE_zstd=OFF -DFEATURE_brotli=OFF
    -DFEATURE_openssl=OFF -DFEATURE_ssl=OFF
    -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_zlib=OFF
    -DFEATURE_system_pcre2=OFF -DFEATURE_system_doubleconversion=OFF -DFEATURE_system_png=OFF
    -DFEATURE_jpeg=OFF -DFEATURE_gif=OFF -DFEATURE_ico=OFF)
