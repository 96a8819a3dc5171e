# What the tests need for Windows, and those of this desktop alone.
set(GOOGLETEST /usr/src/googletest/googletest)
foreach(library gtest gtest_main)
  add_library(${library} STATIC ${GOOGLETEST}/src/${library}$<$<STREQUAL:${library},gtest>:-all>.cc)
  target_include_directories(${library} SYSTEM PUBLIC ${GOOGLETEST}/include PRIVATE ${GOOGLETEST})
  target_compile_options(${library} PRIVATE -w)
  add_library(GTest::${library} ALIAS ${library})
endforeach()
set(ROBOT_USES oleacc)
set(WINDOW_TEST_PROPERTIES RESOURCE_LOCK screen)  # one has the pointer and the keyboard at a time
set(DESKTOP_CORE_TESTS)
set(DISPLAY_CHECKS)
set(SOURCE_ROOT Z:)  # where Wine has the root folder
