# Finds a JDK: javac and java (JAVA_HOME or PATH), its jni.h, and the VM to embed in tests. CMake's own FindJNI wants
# the AWT library as well, which headless JDKs do not have.
#
# QX_JAVA_FOUND       all of it is there
# qx_jni              target: the headers
# QX_JVM_LIBRARY      libjvm
# qx_add_classes(name SOURCES ... [CLASSPATH dir...] [RELEASE n] [DEPENDS ...]) compiles to <build>/<name>, which the
#                     target's QX_CLASSES property names.
find_package(Java 11 COMPONENTS Development Runtime)
if(Java_FOUND)
  get_filename_component(_qx_javac "${Java_JAVAC_EXECUTABLE}" REALPATH)
  get_filename_component(_qx_jdk "${_qx_javac}/../.." ABSOLUTE)
  find_path(QX_JNI_INCLUDE_DIR jni.h HINTS "${_qx_jdk}/include" NO_DEFAULT_PATH)
  find_path(QX_JNI_MD_INCLUDE_DIR jni_md.h HINTS "${_qx_jdk}/include/linux" NO_DEFAULT_PATH)
  find_library(QX_JVM_LIBRARY jvm HINTS "${_qx_jdk}/lib/server" NO_DEFAULT_PATH)
  mark_as_advanced(QX_JNI_INCLUDE_DIR QX_JNI_MD_INCLUDE_DIR QX_JVM_LIBRARY)
endif()

if(Java_FOUND AND QX_JNI_INCLUDE_DIR AND QX_JNI_MD_INCLUDE_DIR AND QX_JVM_LIBRARY)
  set(QX_JAVA_FOUND TRUE)
  add_library(qx_jni INTERFACE)
  target_include_directories(qx_jni SYSTEM INTERFACE "${QX_JNI_INCLUDE_DIR}" "${QX_JNI_MD_INCLUDE_DIR}")
else()
  set(QX_JAVA_FOUND FALSE)
endif()

function(qx_add_classes name)
  cmake_parse_arguments(ARG "" "RELEASE" "SOURCES;CLASSPATH;DEPENDS" ${ARGN})
  set(classes "${CMAKE_CURRENT_BINARY_DIR}/${name}")
  set(sources ${ARG_SOURCES})
  list(TRANSFORM sources PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  list(JOIN ARG_CLASSPATH ":" classpath)
  if(NOT ARG_RELEASE)
    set(ARG_RELEASE 11)
  endif()
  add_custom_command(OUTPUT "${classes}.stamp"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${classes}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${classes}"
    COMMAND ${Java_JAVAC_EXECUTABLE} -Xlint:all,-options,-removal,-deprecation -Werror
            -encoding UTF-8 --release ${ARG_RELEASE} -cp "${classpath}" -d "${classes}" ${sources}
    COMMAND ${CMAKE_COMMAND} -E touch "${classes}.stamp"
    DEPENDS ${sources} ${ARG_DEPENDS}
    VERBATIM COMMENT "Compiling Java classes ${name}")
  add_custom_target(${name} ALL DEPENDS "${classes}.stamp")
  set_target_properties(${name} PROPERTIES QX_CLASSES "${classes}" QX_STAMP "${classes}.stamp")
endfunction()
