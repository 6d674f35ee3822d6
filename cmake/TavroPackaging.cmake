# Installation into the usual places under the prefix (man pages, bash
# completion, the icon theme's PNG) and the Debian package built by CPack:
#   tools/dev.sh package   →   build/tavro-viewer_<version>_<arch>.deb
# The programs, the desktop entry, the metainfo and the SVG icon are installed
# by their own folders (src/cli, src/app/window).
include(GNUInstallDirs)

set(TAVRO_HOMEPAGE "https://github.com/tavro/viewer"
    CACHE STRING "The project's home page (package and metainfo)")
set(TAVRO_MAINTAINER "Tavro Viewer developers <tavro-viewer@users.noreply.github.com>"
    CACHE STRING "The Maintainer field of the Debian package")
# The date printed in the man pages' footers.
set(TAVRO_MAN_DATE "November 2026")

# --- man pages: configured with the version, compressed as Debian installs them
set(tavro_man_pages tavro)
if(TAVRO_BUILD_GUI)
    list(APPEND tavro_man_pages tavro-viewer)
endif()
set(tavro_man_out ${PROJECT_BINARY_DIR}/man)
set(tavro_man_gz)
foreach(page IN LISTS tavro_man_pages)
    configure_file(${PROJECT_SOURCE_DIR}/resources/man/${page}.1.in ${tavro_man_out}/${page}.1 @ONLY)
    add_custom_command(OUTPUT ${tavro_man_out}/${page}.1.gz
        COMMAND gzip -9 -n -c ${tavro_man_out}/${page}.1 > ${tavro_man_out}/${page}.1.gz
        DEPENDS ${tavro_man_out}/${page}.1
        COMMENT "Compressing the man page ${page}(1)"
        VERBATIM)
    list(APPEND tavro_man_gz ${tavro_man_out}/${page}.1.gz)
endforeach()
add_custom_target(tavro_man_pages ALL DEPENDS ${tavro_man_gz})
install(FILES ${tavro_man_gz} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# --- bash completion
set(tavro_completions ${PROJECT_SOURCE_DIR}/resources/completion/tavro)
if(TAVRO_BUILD_GUI)
    list(APPEND tavro_completions ${PROJECT_SOURCE_DIR}/resources/completion/tavro-viewer)
endif()
install(FILES ${tavro_completions} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

# --- the icon as a 256 px PNG beside the scalable SVG
if(TAVRO_BUILD_GUI)
    set(tavro_icon_svg ${PROJECT_SOURCE_DIR}/resources/viewer/io.github.tavro.Viewer.svg)
    set(tavro_icon_png ${PROJECT_BINARY_DIR}/icons/256x256/io.github.tavro.Viewer.png)
    add_custom_command(OUTPUT ${tavro_icon_png}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/icons/256x256
        COMMAND render-icon ${tavro_icon_svg} 256 ${tavro_icon_png}
        DEPENDS render-icon ${tavro_icon_svg}
        COMMENT "Drawing the 256 px application icon"
        VERBATIM)
    add_custom_target(tavro_icon_png ALL DEPENDS ${tavro_icon_png})
    install(FILES ${tavro_icon_png} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps)
endif()

# --- the Debian package
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavro-viewer)
set(CPACK_PACKAGE_VENDOR "Tavro Viewer developers")
set(CPACK_PACKAGE_CONTACT "${TAVRO_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT) # tavro-viewer_<version>_<arch>.deb
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TAVRO_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TAVRO_HOMEPAGE}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "viewer and settings editor for dash-camera memory cards")
# The long description (CPack puts the summary above it).
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Tavro Viewer lists the clips on a car dash camera's memory card (front and
rear camera; continuous, event, parking, manual, motion and time-lapse
recordings), plays both cameras together and shows beside the picture the
telemetry the camera stored with each clip: the G-sensor graph, the GPS speed
on a speedometer and the route on a map. It also edits the camera's
configuration on the card.

The command-line tool tavro runs the same engine for scripting: clip
telemetry as JSON, CSV, GPX, KML or GeoJSON, clip lists, conversion, and the
camera's configuration.")
# The libraries come from the binaries (dpkg-shlibdeps; libqt6svg6 among them
# brings the SVG image plugin); what is only loaded or run at run time is named
# here: ffmpeg for conversion, the web engine's helper process, an OpenGL
# driver for the player views, the Qt Quick modules of the map window, and a
# font.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "ffmpeg, libqt6webenginecore6-bin, qml6-module-qtwebengine, qml6-module-qtquick, qml6-module-qtqml-workerscript, libgl1-mesa-dri, fonts-dejavu-core | fonts-freefont-ttf")
# Wayland sessions, Qt's own dialogs in the viewer's languages, Japanese
# glyphs, and the tools a card format uses.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "qt6-wayland, qt6-translations-l10n, fonts-ipafont-gothic | fonts-noto-cjk, udisks2, dosfstools, exfatprogs")
include(CPack)
