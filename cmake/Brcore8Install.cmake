# What a user of the library gets: headers, library, CMake package, pkg-config file, the command
# with its manual page and completion, and the debugger's view of our types.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS brcore8 EXPORT brcore8Targets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(TARGET brcore8_display)
    install(TARGETS brcore8_display LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/brcore8"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES ${BRCORE8_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}")

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/brcore8")
install(EXPORT brcore8Targets NAMESPACE brcore8:: DESTINATION "${package_folder}"
    FILE brcore8Targets.cmake)
install(FILES "${PROJECT_SOURCE_DIR}/cmake/brcore8Config.cmake"
    "${PROJECT_SOURCE_DIR}/cmake/Brcore8Resources.cmake" DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/brcore8ConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/brcore8ConfigVersion.cmake" DESTINATION "${package_folder}")

# The installed folder may be moved: pkg-config counts the way up from the file itself.
file(RELATIVE_PATH BRCORE8_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${PROJECT_SOURCE_DIR}/cmake/brcore8.pc.in" "${PROJECT_BINARY_DIR}/brcore8.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/brcore8.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# gdb looks for a script of the library's own name beside it.
if(NOT WIN32)
    install(FILES "${PROJECT_SOURCE_DIR}/tools/gdb/brcore8.py"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}" RENAME "libbrcore8.so.${PROJECT_VERSION}-gdb.py")
endif()

if(TARGET brcore8_command)
    set_target_properties(brcore8_command PROPERTIES
        INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS brcore8_command RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
# What the command tells about itself, for a system with manual pages and completing shells. Nobody
# installs what a sanitizer was built into, which may need a special start.
if(TARGET brcore8_command AND NOT WIN32 AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(pages "${PROJECT_BINARY_DIR}/pages")
    file(MAKE_DIRECTORY "${pages}")
    add_custom_command(
        OUTPUT "${pages}/brcore8.1" "${pages}/brcore8.bash" "${pages}/brcore8.zsh"
        COMMAND brcore8_command manual > "${pages}/brcore8.1"
        COMMAND brcore8_command completion bash > "${pages}/brcore8.bash"
        COMMAND brcore8_command completion zsh > "${pages}/brcore8.zsh"
        DEPENDS brcore8_command VERBATIM)
    add_custom_target(brcore8_pages ALL DEPENDS "${pages}/brcore8.1")
    install(FILES "${pages}/brcore8.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "${pages}/brcore8.bash"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME brcore8)
    install(FILES "${pages}/brcore8.zsh"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" RENAME _brcore8)
endif()
