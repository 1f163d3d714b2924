# Fish completion of docproducts: commands, options and their values.

# Names in the catalogue that the line chooses.
function __docproducts_names
    set -l line (commandline -o -p -c | string match -r -v '^(--json|--path|--null|-0)$')
    set line (string replace -r '^(find|explain)$' list -- $line)
    command $line --names 2>/dev/null
end

function __docproducts_codes
    set -l line (commandline -o -p -c)
    command $line[1] check --explain 2>/dev/null | string replace -r ' .*' ''
end

set -l has_command '__fish_seen_subcommand_from roots list find explain check'
complete -c docproducts -f
complete -c docproducts -n "not $has_command" -a roots -d 'Print the documentation root and the data root'
complete -c docproducts -n "not $has_command" -a list -d 'Print the installed products'
complete -c docproducts -n "not $has_command" -a find -d 'Print the product with the given name, installed or not'
complete -c docproducts -n "not $has_command" -a explain -d 'Print how the roots, the catalogue and a product were found'
complete -c docproducts -n "not $has_command" -a check -d 'Print what is wrong with catalogues'

complete -c docproducts -s h -l help -d 'Print a summary of the options'
complete -c docproducts -n "not $has_command" -s V -l version -d 'Print the version'
complete -c docproducts -l install-root -x -a '(__fish_complete_directories)' -d 'Install root'
complete -c docproducts -l support-package-root -x -a '(__fish_complete_directories)' -d 'Support-package root'
complete -c docproducts -l doc-root -x -a '(__fish_complete_directories)' -d 'Documentation root'
complete -c docproducts -l doc-data-root -x -a '(__fish_complete_directories)' -d 'Data root'
complete -c docproducts -l catalogue -r -F -d 'Catalogue to read'
complete -c docproducts -l log -x -a 'off error note detail trace' -d 'Write log records up to this level'
complete -c docproducts -l color -x -a 'auto always never' -d 'Emphasize headings and what is missing'

complete -c docproducts -n $has_command -l json -d 'Print a JSON document'
complete -c docproducts -n '__fish_seen_subcommand_from roots find' -l path -d 'Print only paths, as they are'
complete -c docproducts -n '__fish_seen_subcommand_from roots list find' -s 0 -l null -d 'End each with NUL'
complete -c docproducts -n '__fish_seen_subcommand_from list' -l all -d 'Print all products in the catalogue'
complete -c docproducts -n '__fish_seen_subcommand_from list' -l names -d 'Print only base codes and short names, as they are'
complete -c docproducts -n '__fish_seen_subcommand_from find explain' -a '(__docproducts_names)'

set -l checks '__fish_seen_subcommand_from check'
complete -c docproducts -n $checks -F
complete -c docproducts -n $checks -l strict -d 'Fail after warnings too'
complete -c docproducts -n $checks -l no-files -d "Don't look for the products' files"
complete -c docproducts -n $checks -l ignore -x -a '(__docproducts_codes)' -d "Don't report a warning or an info"
complete -c docproducts -n $checks -l error -x -a '(__docproducts_codes)' -d 'Report as an error'
complete -c docproducts -n $checks -l max -x -d 'Report at most so many problems'
complete -c docproducts -n $checks -l format -x -a 'text json sarif' -d 'Form of the report'
complete -c docproducts -n $checks -l explain -x -a '(__docproducts_codes)' -d 'Print what a code means'
