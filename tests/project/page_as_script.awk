# Makes a script of a page that is to be followed word by word: commands are run, and files that it shows are written.
# Blocks marked sh are commands. A block after a line that ends in `NAME`: is what the file NAME holds.
# With -v only=NAME nothing but the last form of that file comes out.

/^```/ && inside {
    inside = 0
    if (kind == "file" && only == "") print "end of file"
    next
}
/^```/ {
    inside = 1
    kind = "none"
    if ($0 == "```sh") {
        kind = "commands"
    } else if (match(last, /`[^`]+`:$/)) {
        kind = "file"
        name = substr(last, RSTART + 1, RLENGTH - 3)
        if (only == "") printf "cat >'%s' <<'end of file'\n", name
        if (name == only) text = ""
    }
    next
}
inside && only != "" { if (kind == "file" && name == only) text = text $0 "\n" }
inside && only == "" { if (kind != "none") print }
!inside && NF { last = $0 }
END { if (only != "") printf "%s", text }
