target_sources(orvane_platform PRIVATE
  platform/qt/accessibility.cpp
  platform/qt/application.cpp
  platform/qt/buttons.cpp
  platform/qt/form.cpp
  platform/qt/form_widget.cpp
  platform/qt/label.cpp
  platform/qt/lists.cpp
  platform/qt/locale.cpp
  platform/qt/pasted_text.cpp
  platform/qt/pictures.cpp
  platform/qt/places_desktop.cpp
  platform/qt/profile_file.cpp
  platform/qt/sound.cpp
  platform/qt/text.cpp
  platform/qt/text_box.cpp
  platform/qt/theme_style.cpp
  platform/qt/toolkit.cpp)
target_link_libraries(orvane_platform PRIVATE PNG::PNG Qt6::Widgets X11::X11 ${CMAKE_DL_LIBS})

qt_add_resources(orvane_platform assets PREFIX /assets BASE ${ASSETS}
  OPTIONS --format-version 1  # without the times of the files, which would make every build another
  FILES
  ${ASSETS}/banner.png ${ASSETS}/banner@2x.png
  ${ASSETS}/display.png ${ASSETS}/display@2x.png
  ${ASSETS}/logo.png ${ASSETS}/logo@2x.png
  ${ASSETS}/ornament.png ${ASSETS}/ornament@2x.png)

# The sound library is slow to load, so it comes in a module that the player's thread opens.
add_library(orvane_sound MODULE platform/qt/sound_module.cpp)
target_include_directories(orvane_sound PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(orvane_sound PRIVATE SDL2::SDL2 ${CMAKE_DL_LIBS})
set_target_properties(orvane_sound PROPERTIES
  LIBRARY_OUTPUT_DIRECTORY ${PROGRAM_FOLDER} OUTPUT_NAME orvane-sound)

target_link_libraries(orvane-utilities PRIVATE Qt6::Widgets)
add_dependencies(orvane-utilities orvane_sound)
