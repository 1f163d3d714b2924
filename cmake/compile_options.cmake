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

# Hardens a build by g++ or clang: stack canaries, stack probes, control-flow protection if the target has it, checked
# forms of the C and C++ libraries' functions, immediate binding with read-only relocations, and position-independent
# programs. By default only Release has it, and above all no build with a sanitizer. Linked PRIVATE, where sources are
# compiled and where they are linked, so that no consumer inherits it.
set(DOCPRODUCTS_HARDENING "$<CONFIG:Release>" CACHE STRING "Harden the build: ON, OFF, or a condition")
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)
check_cxx_compiler_flag(-fcf-protection DOCPRODUCTS_HAS_CF_PROTECTION)
check_pie_supported(LANGUAGES CXX)
# A fortify level that the compiler or the flags set already stays; distributions choose their own.
string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags)
set(CMAKE_REQUIRED_FLAGS "-O2 ${${flags}}")
check_cxx_source_compiles("
    #ifdef _FORTIFY_SOURCE
    #error
    #endif
    int main() {}" DOCPRODUCTS_SETS_FORTIFY_LEVEL)
unset(CMAKE_REQUIRED_FLAGS)
add_library(docproducts_hardening INTERFACE)
set(hardened "$<AND:$<BOOL:${DOCPRODUCTS_HARDENING}>,$<CXX_COMPILER_ID:GNU,Clang>>")
set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")  # without optimisation glibc warns of a fortify level
target_compile_options(docproducts_hardening INTERFACE
    "$<${hardened}:-fstack-protector-strong;-fstack-clash-protection;-D_GLIBCXX_ASSERTIONS>"
    "$<$<AND:${hardened},${optimised},$<BOOL:${DOCPRODUCTS_SETS_FORTIFY_LEVEL}>>:-D_FORTIFY_SOURCE=2>"
    "$<$<AND:${hardened},$<BOOL:${DOCPRODUCTS_HAS_CF_PROTECTION}>>:-fcf-protection>")
target_link_options(docproducts_hardening INTERFACE "$<${hardened}:LINKER:-z,relro,-z,now>")
