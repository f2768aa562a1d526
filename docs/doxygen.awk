# Turns a header's plain comments into Doxygen's.
# - The comment at the top is the file's, and that of a class which has none; one in a class or namespace is for the declarations that
#   follow it without a blank line; one inside a function's body is nobody's.
# - A specialisation of a standard template is for the compiler alone.
# - A remark behind a declaration is that declaration's, with the lines right below it.
# - Lines indented by four are an example; `this` is code; everything else is literal.

{ text[NR] = $0 }

function is_comment(n) { return n <= NR && text[n] ~ /^ *\/\// && text[n] !~ /^ *\/\/ ---/ }

function literal(s,    parts, count, i, out) {
    gsub(/[\\@<>#&%"]/, "\\\\&", s)
    count = split(s, parts, "`")
    if (count % 2 == 0) return s  # an apostrophe of another kind, not a pair
    out = parts[1]
    for (i = 2; i <= count; ++i) out = out (i % 2 == 0 ? "<tt>" : "</tt>") parts[i]
    return out
}

# Prints the comment lines from first to last, the first one after `before`.
function print_comment(first, last, before,    n, s, code) {
    for (n = first; n <= last; ++n) {
        s = text[n]
        sub(/^ *\/\//, "", s)
        if (!code && s ~ /^     /) { printf "/// @code{.cpp}\n"; code = 1 }
        else if (code && s ~ /^ ? ? ? ?[^ ]/) { printf "/// @endcode\n"; code = 0 }
        print before "///" (code ? s : literal(s))
        before = ""
    }
    if (code) print "/// @endcode"
}

# Follows the braces: a body is whatever is opened by neither a type nor a namespace.
function follow(s,    i, c) {
    gsub(/"([^"\\]|\\.)*"|'([^'\\]|\\.)'|\/\/.*/, "", s)
    for (i = 1; i <= length(s); ++i) {
        c = substr(s, i, 1)
        if (c == "{") {
            ++depth
            if (!body && head !~ /(^|[^A-Za-z_])(class|struct|union|enum|namespace|extern)[^A-Za-z_]/)
                body = depth
            head = ""
        } else if (c == "}") {
            if (body == depth) body = 0
            --depth
            head = ""
        } else if (c == ";") {
            head = ""
        } else {
            head = head c
        }
    }
    head = head " "
}

# The last line of the declarations that a comment ending before `n` speaks for, when they are
# several of one column; otherwise 0.
function group_end(n,    column, count, start) {
    if (text[n] ~ /^ *}|(^| )(class|struct|union|enum|namespace|extern|template) /) return 0
    match(text[n], /^ */)
    column = RLENGTH
    for (start = n; n <= NR; ++n) {
        if (text[n] ~ /^ *$/ || is_comment(n) || text[n] ~ /^#/) break
        match(text[n], /^ */)
        if (RLENGTH < column) break
        if (RLENGTH == column && (n == start || text[n - 1] ~ /[;}] *(\/\/.*)?$/)) ++count
    }
    return count > 1 ? n - 1 : 0
}

END {
    for (n = 1; n <= NR; ++n) {
        if (remark && index(text[n], "//") == remark && is_comment(n)) {
            print "///<" literal(substr(text[n], remark + 2))
            continue
        }
        remark = 0
        if (is_comment(n) && !body) {
            for (last = n; is_comment(last + 1); ++last) {}
            if (n == 1) {
                print "/// @file"
                print_comment(n, last, "")
                contract = last
                print ""
            } else {
                closing = group_end(last + 1)
                print_comment(n, last, closing ? "/// @{\n" : "")
            }
            n = last
            continue
        }
        line = text[n]
        if ((line text[n + 1]) ~ /^template <> ?struct std::/) { print "/// @cond"; hidden = 1 }
        if (line ~ /^(class|struct) .*\{/ && text[n - 1] !~ /^(\/\/|template)/)
            print_comment(1, contract, "")
        follow(line)
        if (line ~ /^ *\/\//) line = ""
        if (match(line, /[;,{}] +\/\/ /)) {
            remark = RSTART + RLENGTH - 3
            line = substr(line, 1, RSTART) " ///< " literal(substr(line, RSTART + RLENGTH))
        }
        print line
        if (hidden && line ~ /^};/) { print "/// @endcond"; hidden = 0 }
        if (n == closing) { print "/// @}"; closing = 0 }
    }
}
