include(CMakeFindDependencyMacro)
find_dependency(pugixml)
include("${CMAKE_CURRENT_LIST_DIR}/larkstone-targets.cmake")
