# What the attacks' scripts share; they run in the project's top folder.

# configure PRESET FOLDER OPTION...: configures a build of the attacks, with neither tests nor tools where the options do not
# ask for them. cmake --build then makes what is wanted of it.
configure()
{
    cmake --preset "$1" -B "$2" -D TOV_BUILD_TESTS=OFF -D TOV_BUILD_TOOLS=OFF -D TOV_BUILD_EXAMPLES=OFF \
        -D TOV_BUILD_ATTACKS=ON "${@:3}"
}

# build FOLDER TARGET...
build()
{
    cmake --build "$1" --parallel "$(nproc)" --target "${@:2}" -- --quiet
}

# tell_figure ROW WHAT FIGURE WANTED yes|no
tell_figure()
{
    printf 'figure | %s | %s | %s | %s | %s\n' "$@"
}

# tell_detail ROW TEXT: a line of Markdown.
tell_detail()
{
    printf 'detail | %s | %s\n' "$@"
}

# holds CONDITION...: prints yes or no, for the last part of a figure.
holds()
{
    [ "$@" ] && echo yes || echo no
}
