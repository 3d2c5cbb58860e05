# The Qt Test suites that run under Wine. Every test starts through run-in-wine.sh, which keeps a
# private Wine prefix in the build folder, with drive letters mapped to folders as card slots.

set(CMAKE_CROSSCOMPILING_EMULATOR bash ${CMAKE_CURRENT_LIST_DIR}/run-in-wine.sh --qtest)
set(dq480_test_timeout 300) # the first test also creates the Wine prefix

# Where Wine finds the DLLs: the cross-built Qt and libraries, and MinGW's own runtime.
get_target_property(dq480_qtcore_dll Qt6::Core IMPORTED_LOCATION_RELEASE)
get_filename_component(dq480_qt_bin ${dq480_qtcore_dll} DIRECTORY)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++-6.dll
                OUTPUT_VARIABLE dq480_libstdcxx OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(dq480_gcc_runtime ${dq480_libstdcxx} DIRECTORY)
find_file(DQ480_WINPTHREAD_DLL libwinpthread-1.dll PATHS /usr/x86_64-w64-mingw32/lib NO_CMAKE_FIND_ROOT_PATH)
get_filename_component(dq480_winpthread ${DQ480_WINPTHREAD_DLL} DIRECTORY)
get_filename_component(dq480_libraries ${dq480_qt_bin}/../lib ABSOLUTE)
string(JOIN ":" dq480_dll_folders ${dq480_qt_bin} ${dq480_libraries} ${dq480_gcc_runtime} ${dq480_winpthread})
set(dq480_test_environment ";WINEDEBUG=-all;DQ480_WINE_DLL_FOLDERS=${dq480_dll_folders}")
string(APPEND dq480_test_environment ";DQ480_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine/prefix")

foreach(name TextChecks PathText SettingFileWriter SettingFileReader)
    dq480_add_test(tst_${name} SOURCES setting/tst_${name}.cpp)
endforeach()
dq480_add_test(tst_SmallDialogs SOURCES widgets/tst_SmallDialogs.cpp LIBS dq480_gui_test_support)
dq480_add_test(tst_QtMsgBox SOURCES widgets/tst_QtMsgBox.cpp LIBS dq480_widgets)
dq480_add_test(tst_frmEdit SOURCES cardedit/tst_frmEdit.cpp LIBS dq480_cardedit dq480_gui_test_support)
dq480_add_test(tst_ProgramRules SOURCES program/tst_ProgramRules.cpp LIBS dq480_program)
dq480_add_test(tst_SentenceTable SOURCES sentence/tst_SentenceTable.cpp LIBS dq480_sentence)
dq480_add_test(tst_frmProg SOURCES program/tst_frmProg.cpp LIBS dq480_program dq480_gui_test_support)
dq480_add_test(tst_EnterKey SOURCES widgets/tst_EnterKey.cpp LIBS dq480_sentence dq480_gui_test_support)
dq480_add_test(tst_Japanese SOURCES app/tst_Japanese.cpp LIBS dq480_mainwindow dq480_gui_test_support)

# The Windows backend itself, on drive letters the runner maps: R: removable, S: fixed.
# As on a Japanese operator's PC: the ANSI code page is 932.
dq480_add_test(tst_WinBackend SOURCES platform/tst_WinBackend.cpp LIBS dq480_format dq480_platform)
set_property(TEST tst_WinBackend APPEND PROPERTY ENVIRONMENT DQ480_WINE_LOCALE=ja_JP.UTF-8)

# The real program on a private X display, driven by keys: File > New, sentences, a program with
# steps, Save as, Open, and Card write onto a FAT16 image that Wine maps as drive D:; the card is
# read back with mtools. A prefix of its own: Wine's desktop process serves one display per prefix,
# and the suites run without one.
set(dq480_journey_environment "WINEDEBUG=-all;DQ480_WINE_DLL_FOLDERS=${dq480_dll_folders}")
set(dq480_linux_cli ${CMAKE_SOURCE_DIR}/build/default/src/cli/dq480-cli)
add_test(NAME wine_window_journey
         COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/window_journey.sh $<TARGET_FILE:dq480> ${dq480_linux_cli}
                 ${CMAKE_BINARY_DIR}/wine-journey-artifacts)
set_tests_properties(wine_window_journey PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 600 ENVIRONMENT
                     "${dq480_journey_environment};DQ480_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine/journey/prefix")

# The packages that scripts/build-windows.sh makes beside the programs, as an operator gets them.
set(dq480_zip ${CMAKE_BINARY_DIR}/dq480-${PROJECT_VERSION}-win64.zip)
set(dq480_setup ${CMAKE_BINARY_DIR}/dq480-${PROJECT_VERSION}-win64-setup.exe)
set(dq480_unpacked bash ${CMAKE_CURRENT_LIST_DIR}/unpacked_zip.sh ${dq480_zip} $<TARGET_FILE:dq480>)
# The same journey from the unpacked zip in a new prefix, with no DLL from elsewhere: the test tone
# on the card comes from the zip's test-tone plugin, and its dq480-cli.exe converts as Linux does.
add_test(NAME wine_zip_journey
         COMMAND ${dq480_unpacked} bash ${CMAKE_CURRENT_LIST_DIR}/window_journey.sh {} ${dq480_linux_cli}
                 ${CMAKE_BINARY_DIR}/wine-zip-journey-artifacts)
set_tests_properties(wine_zip_journey PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 600 ENVIRONMENT "WINEDEBUG=-all")
# The zip's plugins load where the program finds them, and a missing one is named. The suite runs
# from inside the unpacked zip with only Qt Test added, so every other DLL must come from the zip.
add_executable(tst_PackagedPlugins app/tst_PackagedPlugins.cpp)
target_link_libraries(tst_PackagedPlugins PRIVATE Qt6::Test dq480_audio)
set_target_properties(tst_PackagedPlugins PROPERTIES DQ480_LOADS_CAPABILITIES ON)
add_test(NAME tst_PackagedPlugins
         COMMAND ${dq480_unpacked} --copy $<TARGET_FILE:tst_PackagedPlugins> --copy ${dq480_qt_bin}/Qt6Test.dll
                 bash ${CMAKE_CURRENT_LIST_DIR}/run-in-wine.sh --qtest {}/tst_PackagedPlugins.exe)
set_tests_properties(tst_PackagedPlugins PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 300 ENVIRONMENT
                     "QTEST_DISABLE_CRASH_HANDLER=1;WINEDEBUG=-all;DQ480_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine/prefix")
add_test(NAME wine_installer
         COMMAND ${dq480_unpacked} bash ${CMAKE_CURRENT_LIST_DIR}/installer.sh ${dq480_setup} $<TARGET_FILE:dq480> {})
set_tests_properties(wine_installer PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 600 ENVIRONMENT "WINEDEBUG=-all")
