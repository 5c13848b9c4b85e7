# quor_boost: Boost's headers (property_tree and other header-only parts). A cross build must not see all of the host's
# /usr/include, so the one folder `boost` is linked into the build tree.
add_library(quor_boost INTERFACE)
# Says that the old placeholders are meant, which Boost otherwise remarks on at every compile.
target_compile_definitions(quor_boost INTERFACE BOOST_BIND_GLOBAL_PLACEHOLDERS)
find_path(QUOR_BOOST_ROOT boost/property_tree/ptree.hpp PATHS /usr/include /usr/local/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
if(CMAKE_CROSSCOMPILING)
    set(quor_boost_include "${PROJECT_BINARY_DIR}/boost-include")
    file(MAKE_DIRECTORY "${quor_boost_include}")
    file(CREATE_LINK "${QUOR_BOOST_ROOT}/boost" "${quor_boost_include}/boost" SYMBOLIC)
    target_include_directories(quor_boost SYSTEM INTERFACE "${quor_boost_include}")
endif()
