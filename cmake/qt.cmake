# What the build needs on a Linux desktop.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)
find_package(PNG REQUIRED)
find_package(SDL2 2.26 REQUIRED)
find_package(X11 REQUIRED)

set(ORVANE_HARDENING -fstack-clash-protection)
set(ORVANE_LINK_HARDENING LINKER:-z,relro,-z,now,-z,noexecstack)
set(ORVANE_PACKAGING packaging)
