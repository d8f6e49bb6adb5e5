# shellcheck shell=bash disable=SC2154
# products.sh: what the project makes for itself and keeps in the cache, for each target: a Wine, the
# client cvs.exe, and a prefix (Wine's data) as a template.  Sourced.
#
# The folder of a product carries a stamp of the scripts that make it in its name.  So a changed
# script makes a new product, two checkouts with different scripts do not fight over one, and a
# folder that exists is complete: it is made under another name and renamed at the end.

product_path() { # NAME SCRIPT... : the stamp is that of the scripts' text
    local name=$1
    shift
    printf '%s/%s-%s\n' "$cache" "$name" \
        "$(cd "$root/scripts" && sha256sum "$@" | sha256sum | cut -c1-12)"
}

# make_product PATH MEGABYTES WHAT COMMAND...: runs COMMAND with the folder to fill as an argument
# appended to its first word.
make_product() {
    local path=$1 space=$2 what=$3 script=$4
    shift 4
    if [ -d "$path" ]; then
        touch "$path"
        return
    fi
    exec 8>"$cache/lock"
    lock 8 "waiting for another checkout to finish $what"
    if [ ! -d "$path" ]; then
        remove_unused
        need_space "$cache" "$space" "$what"
        say "$what"
        # What was cut short may still be at work: so each maker has a folder of its own.
        rm -rf "$path".part.*
        local name=${path##*/} part=$path.part.$$
        logged "${name%-*}" "$what" make_part "$script" "$part" "$@"
        mv "$part" "$path"
    fi
    exec 8>&-
}

make_part() {
    "$root/scripts/$1" "${@:2}" 8>&-
}

# Products of earlier scripts that nobody has used for two weeks, and data of removed checkouts.
remove_unused() {
    local folder
    find "$cache" -mindepth 1 -maxdepth 1 -type d -name '*-*' -mtime +14 -exec rm -rf {} +
    for folder in "$cache"/checkouts/*/; do
        [ ! -e "$folder/path" ] || [ -d "$(cat "$folder/path")" ] || rm -rf "$folder"
    done
}

# For the target at hand.
ensure_products() {
    wine=$(product_path "wine$bits" make-wine.sh targets.sh apt-private.sh)
    cvs_client=$(product_path "cvs$bits" make-cvs.sh compile-cvs.sh targets.sh apt-private.sh)
    prefix_template=$(product_path "prefix$bits" make-prefix.sh \
        keep-desktop.c make-wine.sh make-cvs.sh compile-cvs.sh targets.sh apt-private.sh)
    make_product "$wine" 1200 "setting up a $bits-bit Wine" make-wine.sh "$target"
    make_product "$cvs_client" 100 "building the $bits-bit client cvs.exe" make-cvs.sh "$target"
    if [ ! -d "$prefix_template" ]; then
        start_displays 1
        DISPLAY=${TANDREL_DISPLAYS%% *} make_product "$prefix_template" 900 \
            "preparing the $bits-bit Wine's data" \
            make-prefix.sh "$target" "$wine" "$cvs_client/cvs.exe"
    else
        make_product "$prefix_template" 0 "" ""
    fi
}
