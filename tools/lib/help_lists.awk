# Writes the contents or the index of the help: what the help compiler calls a site map. It reads the list of places
# (see help_places.awk), then lines with a depth, a title, and the link to a place as a Markdown file names it, if any,
# between tabs.

function go_to_depth(wanted) {
    for (; depth < wanted; depth++) print "<UL>"
    for (; depth > wanted; depth--) print "</UL>"
}

FILENAME == places_file {
    split($0, field, "\t")
    place_of[field[1]] = field[2]
    next
}

FNR == 1 {
    print "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">"
    print "<HTML>\n<HEAD>\n</HEAD>\n<BODY>"
}

{
    split($0, field, "\t")
    if (field[3] != "" && !(field[3] in place_of)) {
        printf "contents or index: no place is named %s\n", field[3] >"/dev/stderr"
        failed = 1
        exit 1
    }
    go_to_depth(field[1] + 0)
    print "<LI><OBJECT type=\"text/sitemap\">"
    print "<param name=\"Name\" value=\"" field[2] "\">"
    if (field[3] != "") print "<param name=\"Local\" value=\"" place_of[field[3]] "\">"
    print "</OBJECT>"
}

END {
    if (failed) exit 1
    go_to_depth(0)
    print "</BODY>\n</HTML>"
}
