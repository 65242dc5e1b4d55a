# The comment at a script's head is its help. Sourced.

usage() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; }

wrong_usage() {
    usage >&2
    exit 2
}

# answer_help "$@": --help is answered; whatever else begins with "-" is wrong.
answer_help() {
    case ${1:-} in
        -h | --help) usage && exit 0 ;;
        -*) wrong_usage ;;
    esac
}
