# Lists the headings of converted Markdown files, one line each, as fields between tabs: how a link names it
# ("undo.md#undo-files"), where it is in the help ("undo.html#undo-files"), its level on its page, its title.
# The file that the variable `split_source` names becomes a page for each heading of level 2.

function slug_of(title) {
    gsub(/<[^>]*>/, "", title)
    gsub(/&[a-z]+;/, "", title)
    title = tolower(title)
    gsub(/[^a-z0-9 _-]/, "", title)
    gsub(/ /, "-", title)
    return title
}

FNR == 1 {
    source = FILENAME
    sub(/.*\//, "", source)
    page = source
    sub(/\.md$/, ".html", page)
}

/^<h[1-6]>/ {
    level = substr($0, 3, 1) + 0
    title = substr($0, 5)
    sub(/<\/h[1-6]>$/, "", title)
    slug = slug_of(title)
    if (source == split_source && level > 1) {
        if (level == 2) page = slug ".html"
        level--
    }
    link = FNR == 1 ? source : source "#" slug
    place = level == 1 ? page : page "#" slug
    if (link in seen || (level == 1 && place in seen)) {
        printf "%s: two headings would be %s\n", source, level == 1 ? place : link >"/dev/stderr"
        exit 1
    }
    seen[link]
    seen[place]
    printf "%s\t%s\t%d\t%s\n", link, place, level, title
}
