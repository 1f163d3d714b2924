# The warnings that the project's own code is held to. Linked PRIVATE, and empty where somebody else embeds the
# project, so that no consumer inherits them; a preset makes them errors.
add_library(dev_warnings INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(dev_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()

# How the code of the project's shared libraries calls: straight, wherever both sides are in one library, since nobody
# is meant to put an operation of the same name in between, and without a stub in front where they aren't. Linked
# PRIVATE; the libraries themselves are linked with -Bsymbolic-functions, which says the same to the linker.
add_library(direct_calls INTERFACE)
target_compile_options(direct_calls INTERFACE -fno-semantic-interposition -fno-plt)

# What a release build by g++ or clang does against memory faults: canaries in front of return addresses, checked forms
# of the C library's copying functions, and relocations that are all done at the start and read-only from then on. Other
# builds stay plain, those for a sanitizer above all. Linked PRIVATE, by what compiles code and by what is linked from
# it, so that no consumer inherits it.
add_library(hardening INTERFACE)
set(hardened "$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU,Clang>>")
target_compile_options(hardening INTERFACE  # in place of any level that is set already
    "$<${hardened}:-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
target_link_options(hardening INTERFACE "$<${hardened}:LINKER:-z,relro,-z,now>")
