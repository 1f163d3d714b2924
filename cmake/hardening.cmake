# What a release build by g++ or clang does against memory faults: canaries in front of return addresses, checked forms
# of the C library's copying functions, and relocations that are all done at the start and read-only from then on. Other
# builds stay plain, those for a sanitizer above all. Linked PRIVATE, by what compiles code and by what is linked from
# it, so that no consumer inherits it.
add_library(hardening INTERFACE)
set(hardened "$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU,Clang>>")
target_compile_options(hardening INTERFACE  # in place of any level that is set already
    "$<${hardened}:-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
target_link_options(hardening INTERFACE "$<${hardened}:LINKER:-z,relro,-z,now>")
