# The logic that knows no Windows.
function(talvix_library name)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PUBLIC talvix_flags)
endfunction()

# talvix_units(target GROUP name sources… GROUP name sources…): which sources of a library are compiled together; what is not
# named is one more group. A product takes a unit as a whole, so that what is used together stands together. Sources are
# named without folder and ending.
function(talvix_units target)
    get_target_property(sources ${target} SOURCES)
    set_property(SOURCE ${sources} PROPERTY UNITY_GROUP ${target}_others)
    set(group "")
    foreach(each ${ARGN})
        if(each STREQUAL GROUP)
            set(group "")
        elseif(group STREQUAL "")
            set(group ${target}_${each})
        else()
            set(named ${sources})
            list(FILTER named INCLUDE REGEX "/${each}\\.cpp$")
            if(named STREQUAL "")
                message(FATAL_ERROR "${target} has no source ${each}")
            endif()
            set_property(SOURCE ${named} PROPERTY UNITY_GROUP ${group})
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

file(GLOB automation_sources CONFIGURE_DEPENDS automation/*.cpp)
talvix_library(talvix_automation ${automation_sources})

file(GLOB component_sources CONFIGURE_DEPENDS
    platform/*.cpp common/*.cpp core/*.cpp operations/*.cpp folder/*.cpp ui/*.cpp)
talvix_library(talvix_component ${component_sources})
target_link_libraries(talvix_component PUBLIC talvix_automation)
talvix_units(talvix_component
    GROUP names file_classes file_name general literal_path project_copy unc_conversion registration # the workbench's programs need these alone
    GROUP list attachment document_record grid grid_events grid_setup listed_folders main presentation_pass row_presentation
    GROUP folder copy_to_project_folder folder_import folder_rules naming_rule project_folder project_folder_store sub_folders)

file(GLOB grid_sources CONFIGURE_DEPENDS grid/model/*.cpp)
talvix_library(talvix_grid_model ${grid_sources})
target_link_libraries(talvix_grid_model PUBLIC talvix_automation)

file(GLOB host_sources CONFIGURE_DEPENDS workbench/host/*.cpp)
if(host_sources)
    talvix_library(talvix_host ${host_sources})
    target_link_libraries(talvix_host PUBLIC talvix_component)
    talvix_units(talvix_host
        GROUP mails mail_coding mail_header message_storage mime_reader
        GROUP window folder_preview list_text mail_item summary)
endif()
