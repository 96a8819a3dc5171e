target_sources(orvane_platform PRIVATE
  platform/win32/accessibility.cpp
  platform/win32/application.cpp
  platform/win32/buttons.cpp
  platform/win32/form.cpp
  platform/win32/label.cpp
  platform/win32/lists.cpp
  platform/win32/locale.cpp
  platform/win32/pasted_text.cpp
  platform/win32/pictures.cpp
  platform/win32/places_desktop.cpp
  platform/win32/profile_file.cpp
  platform/win32/sound.cpp
  platform/win32/stack_guard.cpp
  platform/win32/text.cpp
  platform/win32/text_box.cpp
  platform/win32/theme_style.cpp
  platform/win32/toolkit.cpp)
target_link_libraries(orvane_platform PUBLIC gdi32 usp10 uxtheme)

# Bitmaps with their transparency, and an icon with all its sizes.
set(BITMAPS ${CMAKE_CURRENT_BINARY_DIR}/bitmaps)
set(PICTURES)
foreach(name banner banner@2x display display@2x logo logo@2x ornament ornament@2x)
  add_custom_command(OUTPUT ${BITMAPS}/${name}.bmp
    COMMAND ${CMAKE_COMMAND} -E make_directory ${BITMAPS}
    COMMAND ${CONVERT} ${ASSETS}/${name}.png -strip BMP:${BITMAPS}/${name}.bmp
    DEPENDS ${ASSETS}/${name}.png VERBATIM)
  list(APPEND PICTURES ${BITMAPS}/${name}.bmp)
endforeach()
set(ICONS)
foreach(size 16 24 32 48 64 256)
  list(APPEND ICONS ${ASSETS}/icons/${size}.png)
endforeach()
add_custom_command(OUTPUT ${BITMAPS}/logo.ico
  COMMAND ${CMAKE_COMMAND} -E make_directory ${BITMAPS}
  COMMAND ${CONVERT} ${ICONS} -strip ${BITMAPS}/logo.ico
  DEPENDS ${ICONS} VERBATIM)
list(APPEND PICTURES ${BITMAPS}/logo.ico)

# Not in a library: the linker would leave out what nobody calls. The tests have the same resources.
string(REPLACE "." "," VERSION_NUMBERS "${PROJECT_VERSION}.0")
configure_file(platform/win32/program.rc ${CMAKE_CURRENT_BINARY_DIR}/program.rc @ONLY)
add_library(orvane_resources OBJECT ${CMAKE_CURRENT_BINARY_DIR}/program.rc)
target_include_directories(orvane_resources PRIVATE ${BITMAPS} platform/win32)
set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/program.rc PROPERTIES
  OBJECT_DEPENDS "${PICTURES};${CMAKE_CURRENT_SOURCE_DIR}/platform/win32/program.manifest")
target_sources(orvane_platform INTERFACE $<TARGET_OBJECTS:orvane_resources>)

set_target_properties(orvane-utilities PROPERTIES WIN32_EXECUTABLE ON)

# Tells the walk through the real program what assistive technology is told of it.
add_executable(eyes EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/tests/support/win32/eyes.cpp)
target_link_libraries(eyes PRIVATE orvane_platform oleacc ole32 oleaut32)
