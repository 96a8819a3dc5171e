# What the tests need on a Linux desktop, and those of this desktop alone.
find_package(GTest REQUIRED)
find_package(Qt6 REQUIRED COMPONENTS Test)
set(ROBOT_USES Qt6::Widgets Qt6::Test)
set(WINDOW_TEST_PROPERTIES)
set(DESKTOP_CORE_TESTS
  platform/qt/places_desktop_test.cpp
  platform/qt/profile_file_test.cpp)
set(DISPLAY_CHECKS walk accessibility sound screens wayland handover faults idle installed)
set(SOURCE_ROOT)
set(HAS_LINUX_TESTS ON)
