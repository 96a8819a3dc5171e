# What the tests need on a Linux desktop, and those of this desktop alone.
find_package(GTest REQUIRED)
find_package(Qt6 REQUIRED COMPONENTS Test)
set(ROBOT_USES Qt6::Widgets Qt6::Test)
set(DESKTOP_CORE_TESTS
  platform/qt/places_desktop_test.cpp
  platform/qt/profile_file_test.cpp)
set(DISPLAY_CHECKS walk screens wayland handover faults installed)
set(SOURCE_ROOT)
set(DENSE QT_SCALE_FACTOR=2)
set(HAS_LINUX_TESTS ON)

include(GoogleTest)
function(orvane_add_tests name)
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES ENVIRONMENT "${TEST_ENVIRONMENT}" TIMEOUT 120)
endfunction()
