# What Doxygen reads in place of a header. Headers are written for those who open them: the first comment is about the
# file, a comment that stands by itself is the caption of the members below it, a macro declares a property, and a text
# in quotes may hold any character. Doxygen knows none of that, so here it is put into its words. What is not for users
# is left out. Every line stays where it is: warnings name lines.

function bare(line) {
    sub(/^ *\/\/+ ?/, "", line)
    return line
}

function is_blank(number) {
    return number > NR || lines[number] ~ /^ *$/
}

# Details, friends and what the standard library looks for.
function is_internal(number) {
    if (internal == "") {
        if (lines[number] ~ /^namespace detail {/) {
            internal = lines[number + 2] == "}" ? "}" : "} // namespace"
        } else if (lines[number] ~ /^struct std::/) {
            internal = "};"
        }
    }
    if (internal == "") {
        return lines[number] ~ /^ *friend / && lines[number] !~ /operator/
    }
    if (index(lines[number], internal) == 1) {
        internal = ""
    }
    return 1
}

function leave_out_internals(number) {
    for (number = 1; number <= NR; number++) {
        if (is_internal(number)) {
            if (lines[number - 1] ~ /^ *template </) {
                lines[number - 1] = ""
            }
            lines[number] = ""
        }
    }
}

# Makes code of the quotes outside of code that hold a sign which means something to Doxygen.
function quoted(line, done, part) {
    if (line ~ /^ *\/\/+     /) {
        return line
    }
    while (match(line, /"([^"\\`]|\\.)*"|`[^`]*`/)) {
        part = substr(line, RSTART, RLENGTH)
        if (part ~ /^"/ && part ~ /[\\@#<%&*_~]|--/) {
            part = "``" part "``"
        }
        done = done substr(line, 1, RSTART - 1) part
        line = substr(line, RSTART + RLENGTH)
    }
    return done line
}

# The word that a line begins with is no class, even if there is one called Value.
function plain(line) {
    if (line ~ /^ *\/\/\/ [A-Z][a-z]+ /) {
        sub(/\/\/\/ /, "&%", line)
    }
    return line
}

# A comment about the file stands before the namespace.
function describe_file(first, last, number) {
    lines[first - 1] = "/// @file"
    for (number = first; number <= last; number++) {
        lines[number] = "/// " bare(lines[number])
    }
    described = 1
}

function close_group(number) {
    if (group != "") {
        lines[number] = "/**@}*/" lines[number]
        group = ""
    }
}

# The title of a caption is the category that it names, or its first sentence; the rest is about the members.
function open_group(first, last, number, title, rest, indented) {
    indented = lines[first] ~ /^ /
    title = bare(lines[first])
    if (title ~ /^[A-Za-z]+\([A-Za-z]+\)$/) {
        lines[first] = ""
        for (number = first + 1; number <= last; number++) {
            lines[number] = bare(lines[number])
        }
    } else {
        for (number = first + 1; number <= last; number++) {
            title = title " " bare(lines[number])
            lines[number] = ""
        }
        if (match(title, /\. /)) {
            rest = substr(title, RSTART + 2)
            title = substr(title, 1, RSTART)
        }
        lines[first] = rest
    }
    sub(/\.$/, "", title)
    close_group(first - 1)
    lines[first - 1] = lines[first - 1] "/** @name " title
    lines[last] = lines[last] " */ /**@{*/"
    group = indented ? "class" : "namespace"
}

# The accessors of `ZR_PROPERTY(Type, getter, setter)`; objects come and go as in Slot.
function declare_property(number, indent, entry, parts, type, kind, value) {
    indent = lines[number]
    sub(/ZR_.*/, "", indent)
    entry = lines[number]
    gsub(/^ *ZR_[A-Z]*\(|\)$/, "", entry)
    type = entry
    if (lines[number] ~ /ZR_PROPERTY/) {
        sub(/,[^,]*,[^,]*$/, "", type)
    } else {
        sub(/,[^,]*$/, "", type)
    }
    split(substr(entry, length(type) + 3), parts, /, */)
    value = type " value"
    if (match(type, /^(Ref|Copied|Weak)</)) {
        kind = substr(type, 1, RLENGTH - 1)
        value = substr(type, RLENGTH + 1, length(type) - RLENGTH - 1) "* value"
        sub(/^[A-Za-z]+/, "Ref", type)
    }
    lines[number] = indent type " " parts[1] "() const;"
    if (parts[2] != "") {
        lines[number] = lines[number] " void " parts[2] "(" value ");" set_by[kind]
    }
}

BEGIN {
    set_by["Copied"] = " ///< The value is copied."
    set_by["Ref"] = " ///< The value is kept."
    set_by["Weak"] = " ///< The value is not kept."
}

{
    lines[NR] = $0
}

END {
    leave_out_internals()
    for (number = 1; number <= NR; number++) {
        if (lines[number] ~ /^ *\/\//) {
            lines[number] = plain(quoted(lines[number]))
        }
    }
    for (number = 1; number <= NR; number++) {
        if (lines[number] ~ /^ *ZR_(PROPERTY|READONLY)\(.*\)$/) {
            declare_property(number)
        } else if (lines[number] ~ /^namespace /) {
            in_namespace = 1
        } else if (lines[number] ~ /^} \/\/ namespace /) {
            close_group(number)
        } else if (group == "class" && lines[number] ~ /^};|^  (public|protected|private):$/) {
            close_group(number)
        } else if (lines[number] ~ /^ *\/\// && is_blank(number - 1)) {
            for (last = number; lines[last + 1] ~ /^ *\/\//; last++) {}
            if (!in_namespace && (is_blank(last + 1) || lines[last + 1] ~ /^namespace /)) {
                describe_file(number, last)
            } else if (lines[number] !~ /^ *\/\/\// && is_blank(last + 1)) {
                open_group(number, last)
            }
            number = last
        }
    }
    if (!described) {
        # Doxygen leaves out what is in a file without a description, even an empty one.
        sub(/^#pragma once$/, "/// @file", lines[1])
    }
    for (number = 1; number <= NR; number++) {
        print lines[number]
    }
}
