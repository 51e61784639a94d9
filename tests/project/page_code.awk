# Takes the C++ out of a page. Usage: awk -v page=PATH -v out=PREFIX -f page_code.awk PATH
#
# A block that begins with an #include is a source file of its own, OUTprogram1.cpp and so on; any other one is a
# run of statements, each a function in OUTstatements.cpp. Prints "program FILE", "file FILE" or "statements FILE".
# Lines are numbered as in the page, so that the compiler's messages point there.

/^```cpp/ { inside = 1; start = NR; code = ""; main = 0; next }
/^```/ && inside { inside = 0; put(); next }
inside {
    code = code $0 "\n"
    if ($0 ~ /^int main\(/) main = 1
}

function put(    file) {
    if (code ~ /^#include/) {
        file = out "program" (++files) ".cpp"
        printf "#line %d \"%s\"\n%s", start + 1, page, code >file
        close(file)
        print (main ? "program " : "file ") file
        return
    }
    if (!statements++)
        printf "#include \"project/PageSetting.h\"\n" >(out "statements.cpp")
    printf "void %s_%d();\nvoid %s_%d() {\n#line %d \"%s\"\n%s}\n", name(), start, name(), start, start + 1, page, code >(out "statements.cpp")
}

function name(    text) {
    text = page
    gsub(/[^A-Za-z0-9]/, "_", text)
    return "at" text
}

END {
    if (inside) { print "error " page ": a block of code without an end" }
    if (statements) { print "statements " out "statements.cpp" }
}
