# Turns the comments of a header into comments for Doxygen. A comment documents each declaration up to the next blank
# line, so it is repeated before each; if nothing but a blank line or the end follows, it documents the file.
function document_file() { if (unused) printf "/// @file\n%s", comment; comment = unused = "" }

/^ *\/\// {
    if (!unused) comment = ""
    sub("//", "///")
    comment = comment $0 "\n"
    unused = 1
    next
}
NF == 0 { document_file() }
unused || complete && !/^ *}/ { printf "%s", comment; unused = 0 }
{ print; complete = /;$/ || /^#define/ }
/{$/ { comment = "" }
END { document_file() }
