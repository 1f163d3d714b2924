# The warnings that the project's own code is held to. Linked PRIVATE, and empty where somebody else embeds the
# project, so that no consumer inherits them; a preset makes them errors.
add_library(dev_warnings INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(dev_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()
