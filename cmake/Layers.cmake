# The product's folders in the order in which they may use each other: a library may depend only on
# libraries that stand before it. A dependency that points the other way stops the configuration.
set(VX_LAYERS
    base base_gui records link protocol modules_common modules_widgets modules_channels modules
    controller system_rates gateway system settings reports firmware help app)

add_library(vx_options INTERFACE)
target_include_directories(vx_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(
  vx_options INTERFACE QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                       QT_MESSAGELOGCONTEXT)
target_compile_options(vx_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                            -Woverloaded-virtual -Wconversion -Wno-sign-conversion)
if(VX_WERROR)
  target_compile_options(vx_options INTERFACE -Werror)
endif()
if(VX_SANITIZE)
  target_compile_options(vx_options INTERFACE -fsanitize=${VX_SANITIZE} -fno-omit-frame-pointer
                                              -fno-sanitize-recover=all)
  target_link_options(vx_options INTERFACE -fsanitize=${VX_SANITIZE})
endif()
if(VX_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "scripts/coverage.py reads the counters of Clang: use the preset coverage")
  endif()
  # One file of counters for each program, which all its runs add to.
  target_compile_options(vx_options INTERFACE -fcoverage-mapping
    -fprofile-instr-generate=${CMAKE_BINARY_DIR}/profiles/%m.profraw)
  target_link_options(vx_options INTERFACE -fprofile-instr-generate)
endif()

# vx_add_form(<target> <name>): lets the target include "ui_<name>.h", made of src/forms/<name>.ui. Not by AUTOUIC:
# the build does not know the headers that it makes, and a changed form would take two builds to reach the program.
set(VX_FORMS ${CMAKE_SOURCE_DIR}/src/forms)
# Forms of which a window has hundreds. Their code joins the controls to its slots itself: joining them by their
# names compares every slot with every widget, and took a tenth of the time that a row needs.
set(VX_MASS_FORMS moduledevice_view bridgechannel_view channeltype2_view channeltype3_view)
function(vx_add_form target name)
  set(options)
  if(name IN_LIST VX_MASS_FORMS)
    set(options OPTIONS --no-autoconnection)
  endif()
  qt5_wrap_ui(header ${VX_FORMS}/${name}.ui ${options})
  set_source_files_properties(${header} PROPERTIES SKIP_AUTOMOC ON)
  target_sources(${target} PRIVATE ${header})
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()
set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${VX_FORMS}) # sees new forms

# vx_add_layer(<layer> SOURCES <files> [FORMS] [DEPENDS <layers>] [QT <modules>])
# Makes the static library of one folder with the alias App::<layer>. With FORMS a source <name>.cpp may include
# "ui_<name>.h", made of src/forms/<name>.ui.
function(vx_add_layer layer)
  cmake_parse_arguments(ARG "FORMS" "" "SOURCES;DEPENDS;QT" ${ARGN})
  list(FIND VX_LAYERS ${layer} own)
  if(own EQUAL -1)
    message(FATAL_ERROR "${layer} is no known layer: add it to VX_LAYERS where it belongs")
  endif()
  foreach(dependency IN LISTS ARG_DEPENDS)
    list(FIND VX_LAYERS ${dependency} other)
    if(other EQUAL -1 OR NOT other LESS own)
      message(FATAL_ERROR "${layer} must not depend on ${dependency}: the order is ${VX_LAYERS}")
    endif()
  endforeach()
  add_library(vx_${layer} STATIC ${ARG_SOURCES})
  set_target_properties(vx_${layer} PROPERTIES UNITY_BUILD ${VX_UNITY} UNITY_BUILD_BATCH_SIZE 12)
  add_library(App::${layer} ALIAS vx_${layer})
  list(TRANSFORM ARG_DEPENDS PREPEND App:: OUTPUT_VARIABLE layers)
  list(TRANSFORM ARG_QT PREPEND Qt5:: OUTPUT_VARIABLE modules)
  target_link_libraries(vx_${layer} PUBLIC vx_options ${layers} ${modules})
  if(ARG_FORMS)
    list(FILTER ARG_SOURCES INCLUDE REGEX "[.]cpp$")
    foreach(source IN LISTS ARG_SOURCES)
      get_filename_component(name ${source} NAME_WE)
      if(EXISTS ${VX_FORMS}/${name}.ui)
        vx_add_form(vx_${layer} ${name})
      endif()
    endforeach()
  endif()
endfunction()
