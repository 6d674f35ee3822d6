cmake_minimum_required(VERSION 3.25)

# The layers, checked on every build: a source file may include only project
# headers of its own layer and of the layers beneath it (paths from src/).
# A wrong include fails the build instead of slipping in.
#
#   cmake -DROOT=<source dir> -DSTAMP=<file> -P CheckLayers.cmake

# folder (from the project root) | the include prefixes it may use
set(core "telemetry/,config/,library/,export/,trips/,cut/,TavroVersion.h")
set(rules
    "src/telemetry|${core}"
    "src/config|${core}"
    "src/library|${core}"
    "src/export|${core}"
    "src/trips|${core}"
    "src/cut|${core}"
    "src/i18n|${core},i18n/"
    "src/settings|${core},i18n/,settings/"
    "src/player|${core},style/,player/"
    "src/display|${core},i18n/,display/"
    "src/style|${core},style/"
    "src/editors|${core},i18n/,settings/,style/,editors/"
    "src/cli|${core},i18n/,settings/,cli/"
    # Only the viewer itself reaches into the window and the session.
    "src/app|${core},i18n/,settings/,style/,player/,display/,editors/,app/"
    "tools|${core},i18n/,settings/,style/,player/,display/,editors/,cli/"
    "fuzz|${core},i18n/,settings/,style/,player/,display/,editors/,cli/")

set(layer_folders "telemetry;config;library;export;trips;cut;i18n;settings;style;player;display;editors;cli;app")
set(problems "")
foreach(rule IN LISTS rules)
    string(REPLACE "|" ";" parts "${rule}")
    string(REPLACE "," ";" parts "${parts}")
    list(GET parts 0 folder)
    list(SUBLIST parts 1 -1 allowed)
    file(GLOB_RECURSE files "${ROOT}/${folder}/*.cpp" "${ROOT}/${folder}/*.h")
    foreach(file IN LISTS files)
        file(STRINGS "${file}" includes REGEX "^[ \t]*#[ \t]*include[ \t]+\"[^\"]+\"")
        foreach(line IN LISTS includes)
            string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]+\"([^\"]+)\".*" "\\1" header "${line}")
            # A project header must be named by its path from src/, never from
            # the including file's own folder.
            get_filename_component(dir "${file}" DIRECTORY)
            if(folder MATCHES "^src/" AND EXISTS "${dir}/${header}"
                    AND NOT EXISTS "${ROOT}/src/${header}")
                list(APPEND problems "${file}: \"${header}\" is not a path from src/")
                continue()
            endif()
            string(REGEX MATCH "^[A-Za-z0-9]+" first "${header}")
            if(NOT first IN_LIST layer_folders AND NOT header STREQUAL "TavroVersion.h")
                continue()
            endif()
            set(ok FALSE)
            foreach(prefix IN LISTS allowed)
                string(FIND "${header}" "${prefix}" at)
                if(at EQUAL 0)
                    set(ok TRUE)
                endif()
            endforeach()
            if(NOT ok)
                list(APPEND problems "${file}: \"${header}\" lies in a layer above ${folder}/")
            endif()
        endforeach()
    endforeach()
endforeach()

if(problems)
    list(JOIN problems "\n  " text)
    message(FATAL_ERROR "Includes that break the layering:\n  ${text}")
endif()
file(WRITE "${STAMP}" "layers checked\n")
