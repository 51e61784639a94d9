# Makes the manual page of kxsprite from what `kxsprite --help` prints, so that the two cannot say different things:
#   kxsprite --help | awk -v version=0.1.0 -f man_page.awk
function roff(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    return text
}
# What is said about a name stands in a column of its own, or behind two blanks where the name is long; the line of a
# longer one has nothing else, but perhaps the word in capitals that stands for a value.
function item(line, indent,    at, name, text) {
    at = indent + 12
    if (substr(line, at, 1) != " " || substr(line, at + 1) ~ /^[A-Z]*$/)
        at = match(substr(line, indent + 1), /  /) ? indent + RSTART : length(line)
    name = substr(line, indent + 1, at - indent)
    text = substr(line, at + 1)
    sub(/^ +/, "", text)
    sub(/ +$/, "", name)
    printf ".TP\n\\fB%s\\fR\n", roff(name)
    if (text != "") print roff(text)
}
function nest(level) {
    if (level != nested) print level ? ".RS" : ".RE"
    nested = level
}
BEGIN {
    printf ".TH KXSPRITE 1 \"\" \"Kobaltrix %s\" \"User Commands\"\n.ad l\n.nh\n", version
    print ".SH NAME\nkxsprite \\- make, edit, show and check sprite files"
    print ".SH SYNOPSIS"
}
/^(usage:|      ) kxsprite/ {
    sub(/^(usage:| *) *kxsprite /, "")
    command = $1
    sub(/^[^ ]+ ?/, "")
    printf "\\fBkxsprite %s\\fR %s\n.br\n", command, roff($0)
    next
}
/^$/ {
    nest(0)
    print ++blank == 1 ? ".SH COMMANDS" : blank == 2 ? ".SH OPTIONS" : ".SH EXIT STATUS"
    next
}
/^  [^ ]/ { nest(0); item($0, 2); next }
/^    [^ ]/ { nest(1); item($0, 4); next }
{
    sub(/^ +/, "")
    sub(/^Exit status: /, "")
    print roff($0)
}
END { print ".SH SEE ALSO\nThe pages on sprites and on the studio in the folder docs of Kobaltrix." }
