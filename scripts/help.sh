# Prints the comment at the top of the script and ends it, if its first argument asks for help.
# Sourced by the other scripts, in the project's folder.

case ${1:-} in
  -h | --help)
    sed -n '2,/^[^#]/s/^# \{0,1\}//p' "scripts/${0##*/}"
    exit
    ;;
esac
