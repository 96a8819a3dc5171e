# What the build needs for Windows: one static file, and bitmaps made from the pictures.
enable_language(RC)
find_program(CONVERT convert REQUIRED DOC "ImageMagick's converter of pictures")

add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
# The same sources give the same file.
add_link_options(-static LINKER:--no-insert-timestamp $<$<CONFIG:Release>:-s>)

# Sections at whole pages of the file are mapped where others are read into memory of the process' own.
add_link_options(LINKER:--file-alignment,4096)

set(ORVANE_HARDENING)
set(ORVANE_LINK_HARDENING -fstack-protector-strong LINKER:--dynamicbase,--high-entropy-va,--nxcompat)
set(ORVANE_PACKAGING packaging/windows)
