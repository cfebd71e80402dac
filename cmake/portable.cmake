# The logic that knows no Windows.
function(talvix_library name)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PUBLIC talvix_flags)
endfunction()

file(GLOB automation_sources CONFIGURE_DEPENDS automation/*.cpp)
talvix_library(talvix_automation ${automation_sources})

file(GLOB component_sources CONFIGURE_DEPENDS
    platform/*.cpp common/*.cpp core/*.cpp operations/*.cpp folder/*.cpp ui/*.cpp)
talvix_library(talvix_component ${component_sources})
target_link_libraries(talvix_component PUBLIC talvix_automation)

file(GLOB grid_sources CONFIGURE_DEPENDS grid/model/*.cpp)
talvix_library(talvix_grid_model ${grid_sources})
target_link_libraries(talvix_grid_model PUBLIC talvix_automation)

file(GLOB host_sources CONFIGURE_DEPENDS workbench/host/*.cpp)
if(host_sources)
    talvix_library(talvix_host ${host_sources})
    target_link_libraries(talvix_host PUBLIC talvix_component)
endif()
