# SPDX-License-Identifier: MIT
# Where the parts go on a system. The core is told the bundle's place by the executable's own.
include(GNUInstallDirs)

foreach(program velmora velmora-app)
    if(TARGET ${program})
        install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    endif()
endforeach()
install(DIRECTORY "${VELMORA_BUNDLE_FOLDER}" DESTINATION "${CMAKE_INSTALL_DATADIR}/velmora")
install(FILES LICENSE Documentation/Attribution.md Documentation/permissions.html
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/velmora")
install(FILES Packaging/velmora.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES Packaging/completions/velmora.bash
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME velmora)
install(FILES Packaging/completions/_velmora DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
install(FILES Packaging/completions/velmora.fish
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
if(VELMORA_BUILD_APPLICATION)
    # Where the application looks for its helper.
    install(TARGETS velmora-recognizer RUNTIME DESTINATION lib/velmora)
    include(VelmoraIcons)
    install(DIRECTORY "${VELMORA_ICON_FOLDER}" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons")
    install(FILES Packaging/com.velmora.Velmora.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES Packaging/com.velmora.Velmora.metainfo.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES Resources/icons/com.velmora.Velmora.svg
            DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
endif()
