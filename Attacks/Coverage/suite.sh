# The build with counters for lines and branches, and runs of its tests. The attacks on coverage and on checks share it.

folder_of()
{
    [ "$1" = linux ] && echo Build/attack-coverage || echo "Build/attack-coverage-$1"
}

# make_flush: what the Linux build links to every module, so that also processes that end early leave their counts.
make_flush()
{
    local folder="$PWD/Build/attack-coverage-flush"
    mkdir -p "$folder"
    g++ -O1 -fPIC -shared Attacks/Coverage/Flush.cpp -o "$folder/libflush.so" -ldl
    g++ -O1 -fPIC -c -D TOV_MODULE Attacks/Coverage/Flush.cpp -o "$folder/module.o"
    echo "$folder/module.o $folder/libflush.so -Wl,-rpath,$folder"
}

# prepare_suite linux|windows
prepare_suite()
{
    CMake/install-packages g++ g++-mingw-w64-i686-posix cmake ninja-build pkg-config googletest libcli11-dev \
        libxml2-utils libgcrypt20-dev libgcrypt-mingw-w64-dev cksfv patchelf perl python3 xvfb gdb gcovr
    local link=""
    [ "$1" = linux ] && link="$(make_flush)" || CMake/make-wine-root
    cmake --preset "$1-debug" -B "$(folder_of "$1")" \
        -D CMAKE_CXX_FLAGS="-fprofile-arcs -ftest-coverage -O0 -fprofile-update=atomic" \
        -D CMAKE_EXE_LINKER_FLAGS="$link" -D CMAKE_SHARED_LINKER_FLAGS="$link"
    build "$(folder_of "$1")" all
    # Old counts do not fit programs that were built anew, which say so in the output that tests compare.
    find "$(folder_of "$1")" -name '*.gcda' -delete
}

# run_suite linux|windows OPTION...: runs the tests that CTest's options select. Some fail because they look at what only
# a build without counters has; those are told with the figures.
run_suite()
{
    # A process that cannot write its counts says so there, not in the output that tests compare.
    local -x GCOV_ERROR_FILE="$PWD/$(folder_of "$1")/lost-counts.txt"
    (cd "$(folder_of "$1")" && ctest --parallel "$(nproc)" --output-on-failure "${@:2}") || true
}
