# tonelift_library(<folder> [<what it knows>...]): the static library of one folder below src/, made of all
# sources in that folder and of the resource lists in the folder of the same name below resources/. A folder of the
# program is named by its path, everything else by its target.
function(tonelift_folder_targets out)
  set(targets)
  foreach(name IN LISTS ARGN)
    if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/src/${name})
      string(REPLACE "/" "_" name "tonelift_${name}")
    endif()
    list(APPEND targets ${name})
  endforeach()
  set(${out} ${targets} PARENT_SCOPE)
endfunction()

function(tonelift_library folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.ui ${folder}/*.qrc
    ${PROJECT_SOURCE_DIR}/resources/${folder}/*.qrc)
  if(NOT sources)
    return()
  endif()
  string(REPLACE "/" "_" target "tonelift_${folder}")
  tonelift_folder_targets(uses ${ARGN})
  add_library(${target} STATIC ${sources})
  target_link_libraries(${target} PUBLIC tonelift_options ${uses})
  # A window's class holds its form, so whoever opens the window needs the header made of the form.
  target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/include)
endfunction()

# tonelift_test(<folder> [<what it links>...]): one test program of all sources in tests/<folder>; each of its
# cases is a test of its own, with a time limit.
function(tonelift_test folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
  if(NOT sources)
    return()
  endif()
  string(REPLACE "/" "_" target "test_${folder}")
  tonelift_folder_targets(uses ${ARGN})
  add_executable(${target} ${sources})
  target_link_libraries(${target} PRIVATE tonelift_testkit ${uses})
  gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST TEST_PREFIX "${folder}: "
    PROPERTIES TIMEOUT 300 LABELS ${folder})
endfunction()
