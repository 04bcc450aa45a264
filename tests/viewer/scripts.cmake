# Scripts, from the events that they send to the program that plays them.
kelo_test(script_tests QT
    SOURCES
        output/DelegateCallLogTest.cpp
        output/StateReportTest.cpp
        script/PickPointsTest.cpp
        script/PickScalesTest.cpp
        script/ScriptLimitsTest.cpp
        script/ScriptModifiersTest.cpp
        script/ScriptPlayerTest.cpp
        script/ScriptRunTest.cpp
        script/ScriptTest.cpp
        app/DisplayLossTest.cpp
        app/DocumentedFormatsTest.cpp
        app/ProgramScriptTest.cpp
    LINKS kelo_viewer)
target_compile_definitions(script_tests PRIVATE
    KELO_VIEWER_PROGRAM="$<TARGET_FILE:treatment-viewer>"
    KELO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
add_dependencies(script_tests treatment-viewer kelo_resources)

kelo_test(script_window_tests QT
    SOURCES app/ProgramWindowTest.cpp
    LINKS kelo_viewer
    LABELS window)
target_compile_definitions(script_window_tests PRIVATE
    KELO_VIEWER_PROGRAM="$<TARGET_FILE:treatment-viewer>")
add_dependencies(script_window_tests treatment-viewer kelo_resources)
