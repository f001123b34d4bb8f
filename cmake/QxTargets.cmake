# What every target of the project is compiled with.
#
# -ffp-contract=off: a fused multiply-add rounds once where the effect arithmetic rounds twice, and whether the
# compiler fuses depends on compiler, level and processor. Pictures must not depend on any of them, so contraction
# is off everywhere and fast-math is never used.
add_library(qx_build_flags INTERFACE)
target_compile_features(qx_build_flags INTERFACE cxx_std_17)
target_compile_options(qx_build_flags INTERFACE
  -ffp-contract=off -fno-fast-math -fvisibility-inlines-hidden
  $<$<BOOL:${QX_TOP_LEVEL}>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion>
  $<$<BOOL:${QX_WERROR}>:-Werror>)
if(QX_SANITIZE)
  target_compile_options(qx_build_flags INTERFACE -fsanitize=${QX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qx_build_flags INTERFACE -fsanitize=${QX_SANITIZE})
endif()

# One object library a folder; the libraries are made of them.
function(qx_add_objects name)
  add_library(${name} OBJECT ${ARGN})
  target_link_libraries(${name} PRIVATE qx_build_flags)
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()
