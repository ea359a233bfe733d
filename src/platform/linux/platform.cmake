find_package(Threads REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus Widgets)
find_library(XCB_LIBRARY xcb REQUIRED)

karvel_sources(platform_sources src/platform/linux/*.cpp src/platform/linux/*/*.cpp)
# Of the formats of resources, the one without the files' times.
qt6_add_resources(image_sources ${CMAKE_SOURCE_DIR}/assets/icons/icons.qrc OPTIONS --format-version 1)
add_library(karvel_platform STATIC ${platform_sources} ${image_sources})
target_link_libraries(karvel_platform
  PUBLIC karvel_core Qt6::Widgets
  PRIVATE Qt6::DBus Threads::Threads ${XCB_LIBRARY})

# A position-independent executable, whose Qt code must be position-independent like a library's.
target_compile_options(karvel_options INTERFACE -fPIC)

function(karvel_finish_program target)
  target_link_options(${target} PRIVATE -pie -Wl,-z,relro,-z,now)
endfunction()
