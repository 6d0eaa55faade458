# What the build for browsers takes from this machine: two libraries that are headers alone.
# They are seen through links, so that none of the machine's other headers are in reach.
set(VORN_HEADERS ${CMAKE_BINARY_DIR}/headers)
foreach(library IN ITEMS CLI nlohmann)
  if(NOT EXISTS /usr/include/${library})
    message(FATAL_ERROR "/usr/include/${library} is missing: packaging/install-packages installs it.")
  endif()
  file(MAKE_DIRECTORY ${VORN_HEADERS})
  file(CREATE_LINK /usr/include/${library} ${VORN_HEADERS}/${library} SYMBOLIC)
endforeach()
add_library(vorn_header_libraries INTERFACE)
target_include_directories(vorn_header_libraries SYSTEM INTERFACE ${VORN_HEADERS})
add_library(CLI11::CLI11 ALIAS vorn_header_libraries)
add_library(nlohmann_json::nlohmann_json ALIAS vorn_header_libraries)
