# tonelift_folder_targets(<out> <name>...): targets; a folder of the program is named by its path, everything else by
# its target.
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

# tonelift_library(<folder> [<what it knows>...]): the static library of one folder below src/, made of all
# sources in that folder and of the resource lists in the folder of the same name below resources/.
function(tonelift_library folder)
  set(patterns *.cpp *.h *.ui)
  list(TRANSFORM patterns PREPEND ${folder}/)
  file(GLOB sources CONFIGURE_DEPENDS ${patterns} ${PROJECT_SOURCE_DIR}/resources/${folder}/*.qrc)
  string(REPLACE "/" "_" target "tonelift_${folder}")
  tonelift_folder_targets(uses ${ARGN})
  add_library(${target} STATIC ${sources})
  target_link_libraries(${target} PUBLIC tonelift_options ${uses})
  tonelift_include_root(${target} ${folder})
  # A window's class holds its form, so whoever opens the window needs the header made of the form.
  target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/include)
endfunction()

# tonelift_include_root(<target> <folder>): where the target and those that link it find the folder's headers, and no
# others: a folder of links, in which "rip/JobKinds.h" has the same name as below src/.
function(tonelift_include_root target folder)
  set(root ${PROJECT_BINARY_DIR}/include/${target})
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${folder})
  foreach(header IN LISTS headers)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${header} ${root}/${header} SYMBOLIC)
  endforeach()
  target_include_directories(${target} PUBLIC ${root})
endfunction()

# tonelift_layers(<file> <out>): a library for each folder that the file of the layers names, knowing what the file
# says; <out> becomes what the files beside main.cpp know.
function(tonelift_layers file out)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(STRINGS ${file} lines REGEX "^[^#]+:")
  foreach(line IN LISTS lines)
    string(REGEX MATCH "^([^:]+):([^#]*)" line "${line}")
    separate_arguments(known UNIX_COMMAND "${CMAKE_MATCH_2}")
    if(CMAKE_MATCH_1 STREQUAL main)
      tonelift_folder_targets(known ${known})
      set(${out} ${known} PARENT_SCOPE)
    else()
      tonelift_library(${CMAKE_MATCH_1} ${known})
    endif()
  endforeach()
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
