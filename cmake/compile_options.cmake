# The warnings for the project's own code. Linked PRIVATE, and empty if another project adds this one, so that no
# consumer inherits them. A preset makes them errors.
add_library(dev_warnings INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(dev_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()

# Calls within the project's shared libraries are direct: no operation is meant to be interposed, so the compiler needn't
# allow for it. Calls to other libraries need no stub. Linked PRIVATE. The libraries are also linked with
# -Bsymbolic-functions, which tells the linker the same.
add_library(direct_calls INTERFACE)
target_compile_options(direct_calls INTERFACE -fno-semantic-interposition -fno-plt)

# Defences of a release build by g++ or clang: stack canaries, stack probes, control-flow protection where the target has
# it, checked forms of the C library's and the C++ library's functions, immediate binding with read-only relocations, and
# position-independent programs. Other builds stay plain, those for a sanitizer above all. Linked PRIVATE, by what is
# compiled and by what is linked from it, so that no consumer inherits them.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_cxx_compiler_flag(-fcf-protection DOCPRODUCTS_HAS_CF_PROTECTION)
check_pie_supported(LANGUAGES CXX)
add_library(hardening INTERFACE)
set(hardened "$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU,Clang>>")
target_compile_options(hardening INTERFACE
    "$<${hardened}:-fstack-protector-strong;-fstack-clash-protection;-D_GLIBCXX_ASSERTIONS>"
    "$<${hardened}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"  # in place of any level that is set already
    "$<$<AND:${hardened},$<BOOL:${DOCPRODUCTS_HAS_CF_PROTECTION}>>:-fcf-protection>")
target_link_options(hardening INTERFACE "$<${hardened}:LINKER:-z,relro,-z,now>")
