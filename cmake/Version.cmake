# The version is told once, in project(). Binaries carry it whole; type libraries and what is
# registered for them by its first two numbers.
set(TESSALINE_INTERFACE_VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(TESSALINE_FILE_VERSION ${PROJECT_VERSION}.0)
string(REPLACE . , TESSALINE_VERSION_NUMBERS ${TESSALINE_FILE_VERSION})
set(TESSALINE_GENERATED ${CMAKE_BINARY_DIR}/generated)
configure_file(${CMAKE_SOURCE_DIR}/cmake/Version.h.in ${TESSALINE_GENERATED}/text/Version.h @ONLY)

# As manifests call the width.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(TESSALINE_ARCHITECTURE amd64)
else()
  set(TESSALINE_ARCHITECTURE x86)
endif()

# For what the compiler of type libraries has made.
set(TESSALINE_EVEN_TYPELIB ${CMAKE_SOURCE_DIR}/cmake/even-typelib.py)

# tessaline_versioned(TARGET FILE DESCRIPTION): the resource that tells the system what FILE, made by
# TARGET, is. Nothing on other systems.
function(tessaline_versioned target file description)
  if(NOT WIN32)
    return()
  endif()
  get_filename_component(TESSALINE_NAME ${file} NAME_WLE)
  set(TESSALINE_FILE ${file})
  set(TESSALINE_DESCRIPTION ${description})
  get_target_property(type ${target} TYPE)
  if(type STREQUAL EXECUTABLE)
    set(TESSALINE_FILE_TYPE VFT_APP)
    set(TESSALINE_REGISTERS "")
  else()
    set(TESSALINE_FILE_TYPE VFT_DLL)
    set(TESSALINE_REGISTERS "VALUE \"OLESelfRegister\", \"\"")
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/Version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()
