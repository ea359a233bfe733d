karvel_sources(platform_sources src/platform/windows/*.cpp src/platform/windows/*/*.cpp)
add_library(karvel_platform STATIC ${platform_sources})
# Windows 7 is the oldest system that the program starts on.
target_compile_definitions(karvel_platform PUBLIC
  _WIN32_WINNT=0x0601 WINVER=0x0601 UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
target_link_libraries(karvel_platform PUBLIC karvel_core PRIVATE wininet gdi32 user32 shell32 ole32 imm32
          advapi32 ws2_32)

target_compile_options(karvel_options INTERFACE -g1)

enable_language(RC)

# A program with windows, no console, and its debugging information in a file beside it; with the
# icons, the version and the manifest that Windows looks for in it.
function(karvel_finish_program target)
  set(script ${CMAKE_SOURCE_DIR}/src/platform/windows/karvel.rc)
  set(icons ${CMAKE_SOURCE_DIR}/assets/icons)
  set(manifest ${CMAKE_CURRENT_BINARY_DIR}/resources/karvel.manifest)
  configure_file(${CMAKE_SOURCE_DIR}/src/platform/windows/karvel.manifest ${manifest} @ONLY)
  string(REPLACE "." "," version_numbers ${PROJECT_VERSION}.0)
  set_source_files_properties(${script} PROPERTIES
    COMPILE_DEFINITIONS
      "KARVEL_VERSION=\\\"${PROJECT_VERSION}\\\";KARVEL_VERSION_NUMBERS=${version_numbers}"
    INCLUDE_DIRECTORIES "${CMAKE_SOURCE_DIR}/src;${icons};${CMAKE_CURRENT_BINARY_DIR}/resources"
    OBJECT_DEPENDS "${icons}/window.ico;${icons}/normal.ico;${icons}/failure.ico;${manifest}")
  target_sources(${target} PRIVATE ${script})
  set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
  target_link_options(${target} PRIVATE
    # Sections at whole pages of the file can be mapped instead of copied.
    -Wl,--file-alignment,4096
    -Wl,--nxcompat,--dynamicbase,--high-entropy-va
    # What has been linked in, for packaging/make_sbom.py.
    -Wl,-Map,$<TARGET_FILE:${target}>.map)
  set(finish ${CMAKE_SOURCE_DIR}/packaging/finish-program)
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${finish})
  add_custom_command(TARGET ${target} POST_BUILD VERBATIM
    COMMAND ${finish} $<TARGET_FILE:${target}>)
endfunction()
