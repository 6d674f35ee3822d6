# Shared build settings for the project's own targets.

# Strict warnings on our code only (generated moc/rcc/qm sources stay lenient),
# and no build before the layers' includes are checked (CheckLayers.cmake).
function(tavro_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
    if(TARGET tavro_layers)
        add_dependencies(${target} tavro_layers)
    endif()
endfunction()

# tavro_add_test(NAME name SOURCES ... LIBS ... [GUI] [TIMEOUT s])
# A GoogleTest binary registered with CTest. GUI tests get a QApplication and
# an X server of their own (tools/own-display.sh), so that tests running side
# by side never see each other's windows.
function(tavro_add_test)
    cmake_parse_arguments(T "GUI" "NAME;TIMEOUT" "SOURCES;LIBS" ${ARGN})
    add_executable(${T_NAME} ${T_SOURCES})
    set_target_properties(${T_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    if(T_GUI)
        target_link_libraries(${T_NAME} PRIVATE tavro_test_main_gui)
    else()
        target_link_libraries(${T_NAME} PRIVATE tavro_test_main_core)
    endif()
    target_link_libraries(${T_NAME} PRIVATE ${T_LIBS} tavro_test_support GTest::gtest GTest::gmock)
    tavro_warnings(${T_NAME})
    add_dependencies(${T_NAME} tavro)
    if(T_GUI)
        add_test(NAME ${T_NAME} COMMAND ${PROJECT_SOURCE_DIR}/tools/own-display.sh $<TARGET_FILE:${T_NAME}>)
    else()
        add_test(NAME ${T_NAME} COMMAND ${T_NAME})
    endif()
    if(NOT T_TIMEOUT)
        set(T_TIMEOUT 300)
    endif()
    # Sanitizer builds run several times slower: tools/dev.sh stretches the limits.
    if(TAVRO_TEST_TIMEOUT_FACTOR)
        math(EXPR T_TIMEOUT "${T_TIMEOUT} * ${TAVRO_TEST_TIMEOUT_FACTOR}")
    endif()
    set_tests_properties(${T_NAME} PROPERTIES TIMEOUT ${T_TIMEOUT}
        ENVIRONMENT "TAVRO_TEST_DATA=${CMAKE_CURRENT_SOURCE_DIR};QTWEBENGINE_CHROMIUM_FLAGS=--no-sandbox;QT_LOGGING_RULES=qt.webenginecontext.debug=false")
endfunction()
