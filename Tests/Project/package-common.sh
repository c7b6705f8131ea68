# What the checks of the package share; read by check-package and check-static. They set
#   compiler, toolchain, emulator   of the target; toolchain may be empty
#   flags                           more options of the compiler
#   prefix                          where the package is installed
#   headers, libraries              its include and library folder, if they are not include and lib in the prefix

readonly project="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
readonly consumer="$project/Tests/Project/Consumer"
readonly SUITE_SAYS="TAP version 13
1..1
ok 1 - Words.length"
# The same for a static program: what the library does when it is loaded precedes all code of the program.
readonly STARTUP_SAYS="first: 6 classes, 12 suites, files
thread: 6 classes, 12 suites, files
last: 6 classes, 12 suites, files"

place="$(mktemp -d)"
trap 'rm -rf "$place"' EXIT

fail()
{
    echo "$(basename "$0"): $*" >&2
    exit 1
}

libraries_of()
{
    echo "${libraries:-$prefix/lib}"
}

has_tools()
{
    [ -f "$(libraries_of)/pkgconfig/TOVListeners.pc" ]
}

# run_consumer PROGRAM EXPECTED ARGUMENT... A Windows program finds its DLLs beside itself.
run_consumer()
{
    local program="$1" expected="$2" said
    if [ -n "$toolchain" ]; then
        cp "$prefix"/bin/*.dll "$(dirname "$program")"
    fi
    said="$(LD_LIBRARY_PATH="$(libraries_of)" "${emulator[@]}" "$program" "${@:3}" | tr -d '\r')" ||
        fail "$program ends badly, after it has said '$said'"
    [ "$said" = "$expected" ] || fail "$program says '$said' instead of '$expected'"
}

# configure_consumer FOLDER OPTION...
configure_consumer()
{
    local -a options=(-G Ninja)
    [ ${#flags[@]} -eq 0 ] || options+=(-D CMAKE_CXX_FLAGS="${flags[*]}")
    if [ -n "$toolchain" ]; then
        # A cross build looks for packages in its own roots only.
        options+=(-D CMAKE_TOOLCHAIN_FILE="$toolchain" -D CMAKE_FIND_ROOT_PATH="$prefix")
    else
        options+=(-D CMAKE_CXX_COMPILER="$compiler")
    fi
    cmake -S "$consumer" -B "$1" "${options[@]}" "${@:2}"
}

# run_all FOLDER: the programs of a built consumer.
run_all()
{
    run_consumer "$(ls "$1"/Consumer{,.exe} 2>/dev/null)" "kernel, 32"
    run_consumer "$(ls "$1"/Startup{,.exe} 2>/dev/null)" "$STARTUP_SAYS"
    if has_tools; then
        run_consumer "$(ls "$1"/Listeners{,.exe} 2>/dev/null)" "listeners, 32"
        run_consumer "$(ls "$1"/Suite{,.exe} 2>/dev/null)" "$SUITE_SAYS" --tap
    fi
}

by_cmake()
{
    configure_consumer "$prefix-cmake" -D TOVKernel_DIR="$(libraries_of)/cmake/TOVKernel"
    cmake --build "$prefix-cmake"
    run_all "$prefix-cmake"
}

# by_pkg_config PACKAGE SOURCE EXPECTED ARGUMENT...
by_pkg_config()
{
    local package="$1" source="$2" expected="$3"
    local program="$prefix-pkg-config-$package/${source%.cpp}"
    [ -z "$toolchain" ] || program+=.exe
    mkdir -p "$prefix-pkg-config-$package"

    local -a found
    read -r -a found <<< "$(PKG_CONFIG_LIBDIR="$(libraries_of)/pkgconfig" pkg-config --cflags --libs "$package")"
    "$compiler" -std=c++17 "${flags[@]}" "$consumer/$source" -o "$program" "${found[@]}"
    run_consumer "$program" "$expected" "${@:4}"
}

# install_package BUILD-TREE: staged as a packager would, and then moved: all ways of finding it must follow.
install_package()
{
    DESTDIR="$prefix-stage" cmake --install "$1" --prefix "/opt/TOVKernel"
    mv "$prefix-stage/opt/TOVKernel" "$prefix"
    local folder="${headers:-$prefix/include}"
    [ -f "$folder/TOVKernel/TOVKernel.h" ] || fail "$folder has no headers"
    ! ls -d "$folder"/TOVKernel/{Windows,Posix} 2>/dev/null || fail "a backend's headers are in the package"
}
