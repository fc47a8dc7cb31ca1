# Writes the pages of the help to the folder `folder`, from the list of places (see help_places.awk) and converted
# Markdown files. Links between Markdown files become links between pages.

function fail(text) {
    printf "%s: %s\n", source, text >"/dev/stderr"
    failed = 1
    exit 1
}

function link_to(place, title) { return "<a href=\"" place "\">" title "</a>" }

# Where a link of a Markdown file leads to in the help.
function target_of(link) {
    if (link ~ /^https?:|^mailto:/) return link
    if (link ~ /^#/) link = source link
    sub(/.*\//, "", link)
    if (!(link in place_of)) fail("no place is named " link)
    return place_of[link]
}

function with_targets(line,    done) {
    while (match(line, /href="[^"]*"/)) {
        done = done substr(line, 1, RSTART - 1) "href=\"" target_of(substr(line, RSTART + 6, RLENGTH - 7)) "\""
        line = substr(line, RSTART + RLENGTH)
    }
    return done line
}

# A table's cell that holds the title of a place, as those of the overview of the checks do, leads there.
function with_cell_link(line,    title, name) {
    title = line
    gsub(/<\/?td>/, "", title)
    name = title
    sub(/, again$/, "", name)
    if (name in place_titled) return "<td>" link_to(place_titled[name], title) "</td>"
    return line
}

function print_section_list(from,    i) {
    print "<ul>" >file
    for (i = from; i < places && page_of[i] == page_of[from]; i++)
        if (level_of[i] == 2) print "<li>" link_to(place_at[i], title_at[i]) "</li>" >file
    print "</ul>" >file
}

function begin_page(place, title,    plain) {
    end_page()
    file = folder "/" place
    plain = title
    gsub(/<[^>]*>/, "", plain)
    print "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">" >file
    print "<html>\n<head>" >file
    print "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">" >file
    print "<title>" plain "</title>" >file
    print "<link rel=\"stylesheet\" type=\"text/css\" href=\"help.css\">" >file
    print "</head>\n<body>" >file
    print "<h1>" title "</h1>" >file
}

function end_page() {
    if (file == "") return
    if (lists_pages) print_page_list()
    print "</body>\n</html>" >file
    close(file)
    file = ""
}

# The first page of the file that was split leads to the others.
function print_page_list(    i) {
    lists_pages = 0
    print "<ul>" >file
    for (i = 0; i < places; i++)
        if (source_of[i] == split_source && level_of[i] == 1 && page_of[i] != first_page)
            print "<li>" link_to(place_at[i], title_at[i]) "</li>" >file
    print "</ul>" >file
}

FILENAME == places_file {
    split($0, field, "\t")
    place_of[field[1]] = field[2]
    place_at[places] = field[2]
    level_of[places] = field[3] + 0
    title_at[places] = field[4]
    source_of[places] = page_of[places] = field[1]
    sub(/#.*/, "", source_of[places])
    page_of[places] = field[2]
    sub(/#.*/, "", page_of[places])
    if (level_of[places] == 2) sections[page_of[places]]++
    if (source_of[places] == split_source) place_titled[field[4]] = field[2]
    places++
    next
}

FNR == 1 {
    end_page()
    source = FILENAME
    sub(/.*\//, "", source)
}

/^<h[1-6]>/ {
    place = place_at[next_place]
    title = title_at[next_place]
    level = level_of[next_place]
    if (level == 1) {
        begin_page(place, title)
        has_list = 0
        if (source == split_source && FNR == 1) {
            lists_pages = 1
            first_page = place
        }
    } else {
        if (level == 2 && !has_list && sections[page_of[next_place]] > 5) print_section_list(next_place)
        has_list = 1
        anchor = place
        sub(/.*#/, "", anchor)
        print "<h" level "><a name=\"" anchor "\"></a>" title "</h" level ">" >file
    }
    next_place++
    next
}

{
    line = with_targets($0)
    if (source == split_source && line ~ /^<td>/) line = with_cell_link(line)
    # Closing marks of empty elements belong to XHTML.
    gsub(/ \/>/, ">", line)
    print line >file
}

END { if (!failed) end_page() }
