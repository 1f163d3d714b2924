# The warnings for the project's own code. Linked PRIVATE, and empty if another project adds this one, so that no
# consumer inherits them. A preset makes them errors.
add_library(docproducts_warnings INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(docproducts_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()

# Makes calls within the project's shared libraries direct, because none of their operations is meant to be interposed,
# and calls to other libraries bypass the PLT. Linked PRIVATE. The libraries are also linked with -Bsymbolic-functions,
# which does the same at link time.
add_library(docproducts_direct_calls INTERFACE)
target_compile_options(docproducts_direct_calls INTERFACE -fno-semantic-interposition -fno-plt)

# Hardens a release build by g++ or clang: stack canaries, stack probes, control-flow protection if the target has it,
# checked forms of the C and C++ libraries' functions, immediate binding with read-only relocations, and
# position-independent programs. Other builds have none of it, above all those with a sanitizer. Linked PRIVATE, where
# sources are compiled and where they are linked, so that no consumer inherits it.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_cxx_compiler_flag(-fcf-protection DOCPRODUCTS_HAS_CF_PROTECTION)
check_pie_supported(LANGUAGES CXX)
add_library(docproducts_hardening INTERFACE)
set(hardened "$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU,Clang>>")
target_compile_options(docproducts_hardening INTERFACE
    "$<${hardened}:-fstack-protector-strong;-fstack-clash-protection;-D_GLIBCXX_ASSERTIONS>"
    "$<${hardened}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"  # replaces any level set already
    "$<$<AND:${hardened},$<BOOL:${DOCPRODUCTS_HAS_CF_PROTECTION}>>:-fcf-protection>")
target_link_options(docproducts_hardening INTERFACE "$<${hardened}:LINKER:-z,relro,-z,now>")
