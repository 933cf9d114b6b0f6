# One precompiled header for all targets that are compiled with the project's options.
add_library(cxol_precompiled STATIC cmake/precompiled.cpp)
target_link_libraries(cxol_precompiled PRIVATE cxol_options)
target_precompile_headers(cxol_precompiled PRIVATE
  <algorithm> <array> <cstdint> <deque> <exception> <functional> <map> <memory> <optional> <ranges>
  <set> <span> <stdexcept> <string> <string_view> <unordered_map> <utility> <variant> <vector>)

function(cxol_precompile_below folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(libraries ${target} LINK_LIBRARIES)
    if("cxol_options" IN_LIST libraries AND NOT target STREQUAL "cxol_precompiled")
      target_precompile_headers(${target} REUSE_FROM cxol_precompiled)
    endif()
  endforeach()
  get_property(subfolders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder ${subfolders})
    cxol_precompile_below(${subfolder})
  endforeach()
endfunction()
cxol_precompile_below(${PROJECT_SOURCE_DIR})
