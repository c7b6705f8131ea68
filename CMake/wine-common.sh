# Where the 32-bit Wine stands that runs the Windows programs; read by make-wine-root and wine-run.
#
# It is kept in the user's cache folder, outside the checkout, so that every checkout and every later run finds it.

tov_cache="${XDG_CACHE_HOME:-${HOME:?HOME is not set}/.cache}/tovkernel"
tov_wine_root="$tov_cache/wine-root"
tov_wine_libraries="$tov_wine_root/usr/lib/i386-linux-gnu:$tov_wine_root/lib/i386-linux-gnu"

# Counted up whenever make-wine-root or the making of a prefix changes: what was made before is then made anew.
tov_wine_recipe=2

# The programs inside the root know it by its absolute path, so a root that was moved is as good as none.
tov_wine_mark="recipe $tov_wine_recipe at $tov_wine_root"

tov_wine_root_is_complete()
{
    [ -f "$tov_wine_root/complete" ] && [ "$(cat "$tov_wine_root/complete")" = "$tov_wine_mark" ]
}
