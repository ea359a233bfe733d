find_package(CURL REQUIRED)
find_package(Threads REQUIRED)

karvel_sources(platform_sources src/platform/linux/*.cpp)
add_library(karvel_platform STATIC ${platform_sources})
target_link_libraries(karvel_platform PUBLIC karvel_core PRIVATE CURL::libcurl Threads::Threads)

function(karvel_finish_program target)
endfunction()
