# What `cmake --install` puts where: the libraries with the CMake package and the pkg-config file, and the command with
# its man page, its completions and the schemas. Headers lie below include/docproducts, which is on the
# include path; so they are included as they are here.
include(CMakePackageConfigHelpers)

set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/docproducts)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/docproducts)

set(libraries docproducts)
set(dependencies "")  # of the CMake package
if(TARGET docproducts::platform)
    list(APPEND libraries vorlan_platform)
elseif(DOCPRODUCTS_PLATFORM)
    string(APPEND dependencies "find_dependency(${DOCPRODUCTS_PLATFORM})\n")
else()
    message(FATAL_ERROR "To install, name the package of the host's services: -DDOCPRODUCTS_PLATFORM=<package>")
endif()
if(NOT BUILD_SHARED_LIBS)  # a shared library links Boost itself
    string(APPEND dependencies "find_dependency(Boost 1.74 COMPONENTS log thread)\n")
    set(boost_flags "-lboost_log -lboost_thread")
endif()
install(TARGETS ${libraries} EXPORT docproducts-targets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    FILE_SET HEADERS DESTINATION ${header_dir} COMPONENT development
    INCLUDES DESTINATION ${header_dir})
install(EXPORT docproducts-targets NAMESPACE docproducts:: DESTINATION ${config_dir} COMPONENT development)

configure_package_config_file(cmake/docproducts-config.cmake.in ${PROJECT_BINARY_DIR}/docproducts-config.cmake
    INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/docproducts-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
        ${PROJECT_BINARY_DIR}/docproducts-config.cmake
        ${PROJECT_BINARY_DIR}/docproducts-config-version.cmake
    DESTINATION ${config_dir} COMPONENT development)

# Its paths are relative to the file itself, so that an install tree may be moved. It can't know the flags of a host's
# own services.
if(TARGET docproducts::platform)
    file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    configure_file(cmake/docproducts.pc.in ${PROJECT_BINARY_DIR}/docproducts.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/docproducts.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endif()

if(TARGET docproducts_command)
    install(TARGETS docproducts_command RUNTIME COMPONENT tool)
    install(FILES ${PROJECT_BINARY_DIR}/app/docproducts.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    set(completions ${PROJECT_SOURCE_DIR}/app/completions)
    install(FILES ${completions}/docproducts.bash RENAME docproducts
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
    install(FILES ${completions}/_docproducts
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
    install(FILES ${completions}/docproducts.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
    install(FILES share/answers.schema.json share/docset.schema.json
        DESTINATION ${CMAKE_INSTALL_DATADIR}/docproducts COMPONENT tool)
endif()
