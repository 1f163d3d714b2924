# Links pages by Doxygen's label for them, which has "_" in place of "/": a path is cut at the first blank of the folder
# that the project is in. Headings have no label, so a link to one leads to its page. Links to folders lead out of
# build/docs/html.
s,](README\.md[^)]*),](@ref index),g
s,](\([^):]*\)\.md[^)]*),](@ref md_\1),g
:slash
s,\(](@ref md_[^)]*\)/,\1_,
t slash
s,](\([^): .]*/[^): .]*\)),](../../../\1),g
