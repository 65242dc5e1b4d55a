# ZIP archives of one folder that bears their name. The same input gives the same bytes: everything in them has the
# time `epoch` (seconds). Sourced.

# archive_begin ZIP: makes the empty folder, `folder`.
archive_begin() {
    export TZ=UTC LC_ALL=C
    zip_file=$1
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    folder=$work/$(basename "$zip_file" .zip)
    mkdir "$folder"
}

archive_end() {
    chmod -R u=rwX,go=rX "$folder"
    find "$folder" -exec touch -d "@$epoch" {} +
    (cd "$work" && find "$(basename "$folder")" | sort | zip -X -9 -q archive.zip -@)
    mkdir -p "$(dirname "$zip_file")"
    mv "$work/archive.zip" "$zip_file"
}
