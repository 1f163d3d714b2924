# How the code of the project's shared libraries calls: straight, wherever both sides are in one library, since nobody is
# meant to put an operation of the same name in between, and without a stub in front where they aren't. Linked PRIVATE;
# the libraries themselves are linked with -Bsymbolic-functions, which says the same to the linker.
add_library(direct_calls INTERFACE)
target_compile_options(direct_calls INTERFACE -fno-semantic-interposition -fno-plt)
