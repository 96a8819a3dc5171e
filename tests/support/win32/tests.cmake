# What the tests need for Windows, and those of this desktop alone.
set(GOOGLETEST /usr/src/googletest/googletest)
foreach(library gtest gtest_main)
  add_library(${library} STATIC ${GOOGLETEST}/src/${library}$<$<STREQUAL:${library},gtest>:-all>.cc)
  target_include_directories(${library} SYSTEM PUBLIC ${GOOGLETEST}/include PRIVATE ${GOOGLETEST})
  target_compile_options(${library} PRIVATE -w)
  add_library(GTest::${library} ALIAS ${library})
endforeach()
set(ROBOT_USES oleacc)
set(DESKTOP_CORE_TESTS
  platform/win32/places_desktop_test.cpp
  platform/win32/profile_file_test.cpp)
set(DISPLAY_CHECKS)
set(SOURCE_ROOT Z:)  # where Wine has the root folder

set(DENSE ORVANE_DPI=120 ORVANE_DPI=144 ORVANE_DPI=192)
set(DENSE_SCREEN ${CMAKE_CROSSCOMPILING_EMULATOR} --on-screen 1600x1600 ${CMAKE_CROSSCOMPILING_EMULATOR})

# Each start in Wine takes longer than most tests.
function(orvane_add_tests name)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES TIMEOUT 500 RESOURCE_LOCK screen)  # one has the pointer at a time
endfunction()
