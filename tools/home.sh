# shellcheck shell=bash
# Where ./run keeps the user's melodies. Sourced by bash after lib.sh.

# The user's data folder of the installed program; nothing if this user has none.
user_data_folder() {
    local data=${XDG_DATA_HOME:-}
    [[ $data == /* ]] || data=${HOME:+$HOME/.local/share}
    [[ -z $data ]] || echo "$data/cantavista"
}

# Prints a path that is not there yet: the given one, or the same with a number behind its name.
free_name() {
    local path=$1 number=2
    while [[ -e $path || -L $path ]]; do
        path="${1%.*} $number.${1##*.}"
        number=$((number + 1))
    done
    echo "$path"
}

# Moves what a user made in a folder of built files ($1) to the user's data folder ($2): melodies
# and copies of unsaved ones, but not the examples as they came with the program, which stay. No
# file is replaced: one of the same name with another content gets a number.
move_melodies() {
    local built=$1 own=$2 file part target moved=0
    while IFS= read -r -d '' file; do
        part=${file#"$built"/}
        ! cmp -s "$file" "assets/melodie/${part#Melodie/}" || continue
        # A folder of melodies without examples would stay without them.
        [[ -e $own/Melodie ]] || {
            mkdir -p "$own" && cp -r assets/melodie "$own/Melodie"
        } || return
        target=$own/$part
        mkdir -p "$(dirname "$target")" || return
        if cmp -s "$file" "$target"; then
            rm "$file"
        else
            target=$(free_name "$target")
            mv -n "$file" "$target" || return
        fi
        moved=$((moved + 1))
    done < <(find "$built/Melodie" "$built"/Melodia\ non\ salvata*.mel -type f -print0 2>/dev/null)
    [[ $moved -eq 0 ]] || echo "Melodies moved from $built to $own: $moved" >&2
}
