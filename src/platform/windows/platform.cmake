karvel_sources(platform_sources src/platform/windows/*.cpp)
add_library(karvel_platform STATIC ${platform_sources})
# Windows 7 is the oldest system that the program starts on.
target_compile_definitions(karvel_platform PUBLIC
  _WIN32_WINNT=0x0601 WINVER=0x0601 UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
target_link_libraries(karvel_platform PUBLIC karvel_core PRIVATE wininet)

# A program with windows, no console, and nothing in it that only a debugger reads.
function(karvel_finish_program target)
  set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
  target_link_options(${target} PRIVATE -s)
endfunction()
