# shellcheck shell=bash
# Pictures of the virtual screen for a program that asks for them. To be sourced.
source "${BASH_SOURCE[0]%/*}/setup.sh"

# serve_shots REQUESTS OUTPUT: for every file NAME.request that appears in the first folder, writes OUTPUT/NAME.png and
# then creates NAME.done beside the request, or NAME.failed. Runs until it is killed or this script's process ends.
serve_shots() {
    local requests=$1 output=$2 request idle
    exec {idle}<> <(:) # nothing ever comes here: a pause that starts no process
    while kill -0 "$$" 2>/dev/null; do
        for request in "$requests"/*.request; do
            if [[ -e $request ]]; then answer_request "$request" "$output"; fi
        done
        read -r -t 0.05 -u "$idle" || true
    done
}

answer_request() {
    local path=${1%.request} output=$2
    local name=${path##*/} answer='failed'
    if take_picture "$name" "$path.png" && mv "$path.png" "$output/$name.png"; then answer='done'; fi
    mv "$1" "$path.$answer"
}

take_picture() {
    if [[ ! $1 =~ ^[A-Za-z0-9_][A-Za-z0-9._-]*$ ]]; then
        say "no file name for a picture: '$1'"
        return 1
    fi
    import -silent -window root "png:$2"
}
