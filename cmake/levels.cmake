# kp_level(NAME DEPS...) makes the static library kp_NAME from the sources of
# the folder NAME, linked to exactly the levels it may use. A level that
# includes from a level it does not name fails the include check test.
function(kp_level name)
  file(GLOB _src CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  file(GLOB _hdr CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  add_library(kp_${name} STATIC ${_src} ${_hdr})
  target_include_directories(kp_${name} PUBLIC ${PROJECT_SOURCE_DIR})
  if(ARGN)
    target_link_libraries(kp_${name} PUBLIC ${ARGN})
  endif()
endfunction()
