# The Windows side: adapters, the two COM servers and the workbench.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(generated ${CMAKE_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(widl_bits --win64)
    set(talvix_manifest_arch amd64)
else()
    set(widl_bits --win32)
    set(talvix_manifest_arch x86)
endif()

# Dialogs and commands wait for people: they are built for size.
target_compile_options(talvix_component PRIVATE -Os)
# So are the windows of the adapters, and what the grid does once per gesture of a user. They are a library of
# objects each: sources with flags of their own would be compiled one by one.
function(talvix_for_size target)
    list(TRANSFORM ARGN PREPEND ${CMAKE_SOURCE_DIR}/)
    get_target_property(others ${target} SOURCES)
    list(REMOVE_ITEM others ${ARGN})
    set_property(TARGET ${target} PROPERTY SOURCES ${others})
    add_library(${target}_for_size OBJECT ${ARGN})
    target_link_libraries(${target}_for_size PUBLIC talvix_flags)
    target_compile_options(${target}_for_size PRIVATE -Os)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_for_size>)
endfunction()
talvix_for_size(talvix_grid_model grid/model/grid_members.cpp grid/model/group_members.cpp grid/model/column_members.cpp
    grid/model/saved_layout.cpp grid/model/dropped_object.cpp grid/model/gestures.cpp grid/model/grid_model.cpp
    grid/model/layout.cpp grid/model/row_selection.cpp)

file(GLOB win32_sources CONFIGURE_DEPENDS platform/win32/*.cpp platform/win32/com/*.cpp)
talvix_library(talvix_win32 ${win32_sources})
talvix_units(talvix_win32 GROUP programs files item_layout thread_windows visual_styles
    GROUP component file_answers key_watch messages network objects pictures registry shell system trace)
talvix_for_size(talvix_win32 platform/win32/dialogs.cpp platform/win32/item_window.cpp platform/win32/dialog_template.cpp
    platform/win32/drop_target.cpp platform/win32/popup_menu.cpp platform/win32/progress_window.cpp
    platform/win32/shell_browser.cpp platform/win32/com/registration.cpp platform/win32/com/event_connection.cpp
    platform/win32/com/server_exports.cpp)
talvix_units(talvix_win32_for_size GROUP dialogs dialogs dialog_template item_window progress_window shell_browser)
target_link_libraries(talvix_win32 PUBLIC talvix_component
    ole32 oleaut32 uuid shell32 user32 gdi32 advapi32 mpr)

# Reads the GUIDs of an .idl into ${prefix}_CLSID_Name, ${prefix}_LIBID_Name, ${prefix}_DIID_Name and
# into a header of the same names, with a list of the dispatch interfaces: the .idl stays the only place where they stand.
function(talvix_guids prefix idl header)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl})
    file(STRINGS ${idl} found REGEX "uuid\\(|^ *(library|dispinterface|coclass) [A-Za-z_]+$")
    set(lines "#pragma once\n\n#include \"platform/win32/com/dispatch_interfaces.h\"\n\nnamespace talvix {\n\n")
    set(interfaces "")
    foreach(each ${found})
        if(each MATCHES "uuid\\(([0-9a-f-]+)\\)")
            set(plain ${CMAKE_MATCH_1})
            continue()
        endif()
        string(REGEX MATCH "(library|dispinterface|coclass) ([A-Za-z_]+)$" what "${each}")
        set(kind ${CMAKE_MATCH_1})
        set(name ${CMAKE_MATCH_2})
        string(REPLACE "-" ";" parts "${plain}")
        list(GET parts 0 p0)
        list(GET parts 1 p1)
        list(GET parts 2 p2)
        list(GET parts 3 p3)
        list(GET parts 4 p4)
        string(REGEX REPLACE "(..)" "0x\\1, " tail "${p3}${p4}")
        string(REGEX REPLACE ", $" "" tail "${tail}")
        if(kind STREQUAL "library")
            set(library ${name})
        elseif(kind STREQUAL "dispinterface")
            string(APPEND interfaces "    {u\"${name}\", DIID_${name}},\n")
        endif()
        string(REPLACE "library" "LIBID" label ${kind})
        string(REPLACE "dispinterface" "DIID" label ${label})
        string(REPLACE "coclass" "CLSID" label ${label})
        string(APPEND lines "inline constexpr GUID ${label}_${name}{0x${p0}, 0x${p1}, 0x${p2}, {${tail}}};\n")
        set(${prefix}_${label}_${name} ${plain} PARENT_SCOPE)
    endforeach()
    string(APPEND lines "inline constexpr DispatchInterface kInterfacesOf${library}[] = {\n${interfaces}};\n")
    string(APPEND lines "\n} // namespace talvix\n")
    file(CONFIGURE OUTPUT ${header} CONTENT "${lines}" @ONLY)
endfunction()

# What clients of ours that are bound to a type library are compiled with; the imported base is the system's own header.
file(CONFIGURE OUTPUT ${generated}/typed/base.h CONTENT "#include <oaidl.h>\n")

# A COM server: type library and version resource inside, exports by plain name. Further arguments are .idl files whose
# libraries are imported.
function(talvix_server target file folder idl)
    get_filename_component(base ${idl} NAME_WE)
    set(tlb ${generated}/${base}.tlb)
    set(imported ${ARGN})
    list(TRANSFORM imported REPLACE ".*/(.*)\\.idl" "${generated}/\\1.tlb")
    set(widl ${TALVIX_WIDL} ${widl_bits} -I. -L/usr/lib/x86_64-linux-gnu/wine/x86_64-windows -L${generated})
    set(read ${CMAKE_SOURCE_DIR}/${idl} ${CMAKE_SOURCE_DIR}/platform/win32/com/base.idl ${imported})
    add_custom_command(OUTPUT ${tlb} COMMAND ${widl} -t -o ${tlb} ${idl}
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} DEPENDS ${read})
    add_custom_command(OUTPUT ${generated}/typed/${base}.h COMMAND ${widl} -h -o ${generated}/typed/${base}.h ${idl}
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} DEPENDS ${read})
    add_custom_target(${target}_typed DEPENDS ${generated}/typed/${base}.h)
    set(rc ${CMAKE_SOURCE_DIR}/${folder}/${base}.rc)
    set_property(SOURCE ${rc} APPEND PROPERTY OBJECT_DEPENDS ${tlb})
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    add_library(${target} SHARED ${sources} platform/win32/dll/exports.cpp
        platform/win32/dll/stack_guard.cpp platform/win32/dll/terminate.cpp ${rc} ${CMAKE_SOURCE_DIR}/${folder}/${base}.def)
    set_source_files_properties(${rc} PROPERTIES COMPILE_OPTIONS "-I${generated};-I${CMAKE_SOURCE_DIR}")
    target_include_directories(${target} PRIVATE ${generated})
    get_filename_component(name ${file} NAME_WE)
    get_filename_component(suffix ${file} LAST_EXT)
    set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME ${name} SUFFIX ${suffix})
    target_link_options(${target} PRIVATE -Wl,--kill-at -Wl,--gc-sections -Wl,-Map,$<TARGET_FILE:${target}>.map)
    # What users get is the stripped file; the symbols lie beside it.
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
        COMMAND ${CMAKE_STRIP} $<TARGET_FILE:${target}>)
endfunction()

talvix_guids(DMS ${CMAKE_SOURCE_DIR}/server/talvix_dms.idl ${generated}/talvix_dms_guids.h)
talvix_guids(GRID ${CMAKE_SOURCE_DIR}/grid/control/talvix_grid.idl ${generated}/talvix_grid_guids.h)

talvix_server(TalvixDMS TalvixDMS.dll server server/talvix_dms.idl)
target_link_libraries(TalvixDMS PRIVATE talvix_win32)

talvix_server(TalvixGrid TalvixGrid.ocx grid/control grid/control/talvix_grid.idl)
target_link_libraries(TalvixGrid PRIVATE talvix_win32 talvix_grid_model comctl32 oleacc uxtheme)
target_compile_options(TalvixGrid PRIVATE -Os) # the model beneath is built for speed

# The workbench finds both servers beside itself through its manifest, registered or not.
configure_file(workbench/program/workbench.manifest.in ${generated}/TalvixWorkbench.exe.manifest @ONLY)
file(COPY ${generated}/TalvixWorkbench.exe.manifest DESTINATION ${CMAKE_BINARY_DIR}/bin)
file(GLOB workbench_sources CONFIGURE_DEPENDS workbench/program/*.cpp)
list(REMOVE_ITEM workbench_sources ${CMAKE_SOURCE_DIR}/workbench/program/program.cpp)
talvix_library(talvix_workbench ${workbench_sources})
target_compile_options(talvix_workbench PRIVATE -Os)
target_compile_options(talvix_host PRIVATE -Os)
target_link_libraries(talvix_workbench PUBLIC talvix_host talvix_win32 comctl32 comdlg32)
talvix_units(talvix_workbench # what consoles and scripts need as well, and the window's own
    GROUP project file_checks list_dialog message_file open_project page project_file project_place project_session save_export trace_tail
    GROUP console command_line console_commands text_file
    GROUP pages clipboard control_host documents_page fields_page file_mail support_page tool_bar print_list)
add_executable(TalvixWorkbench WIN32 workbench/program/program.cpp workbench/program/workbench.rc)
set_source_files_properties(workbench/program/workbench.rc PROPERTIES
    COMPILE_OPTIONS "-I${generated};-I${CMAKE_SOURCE_DIR}" OBJECT_DEPENDS ${generated}/TalvixWorkbench.exe.manifest)
target_link_libraries(TalvixWorkbench PRIVATE talvix_workbench)
target_link_options(TalvixWorkbench PRIVATE -municode -Wl,--gc-sections)
add_dependencies(TalvixWorkbench TalvixDMS TalvixGrid)
add_custom_command(TARGET TalvixWorkbench POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:TalvixWorkbench> $<TARGET_FILE:TalvixWorkbench>.debug
    COMMAND ${CMAKE_STRIP} $<TARGET_FILE:TalvixWorkbench>)

# The same without a window, for consoles; its name wins over the program's there.
add_executable(TalvixConsole workbench/console/console.cpp workbench/console/console.rc)
set_source_files_properties(workbench/console/console.rc PROPERTIES
    COMPILE_OPTIONS "-I${generated};-I${CMAKE_SOURCE_DIR}" OBJECT_DEPENDS ${generated}/TalvixWorkbench.exe.manifest)
set_target_properties(TalvixConsole PROPERTIES OUTPUT_NAME TalvixWorkbench SUFFIX .com)
target_link_libraries(TalvixConsole PRIVATE talvix_workbench)
target_link_options(TalvixConsole PRIVATE -municode -Wl,--gc-sections)
add_dependencies(TalvixConsole TalvixDMS TalvixGrid)
add_custom_command(TARGET TalvixConsole POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:TalvixConsole> $<TARGET_FILE:TalvixConsole>.debug
    COMMAND ${CMAKE_STRIP} $<TARGET_FILE:TalvixConsole>)

# Projects for scripts.
talvix_guids(PROJECT ${CMAKE_SOURCE_DIR}/workbench/script/talvix_project.idl ${generated}/talvix_project_guids.h)
talvix_server(TalvixProject TalvixProject.dll workbench/script workbench/script/talvix_project.idl
    server/talvix_dms.idl grid/control/talvix_grid.idl)
add_dependencies(TalvixProject TalvixDMS TalvixGrid)
target_link_libraries(TalvixProject PRIVATE talvix_workbench)
