# Installs the build tree into a scratch prefix, then configures, builds and runs a
# small outside project that finds hy_util with find_package(hy_util CONFIG).
file(REMOVE_RECURSE ${HY_WORK_DIR})
set(prefix ${HY_WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${HY_BUILD_DIR} --prefix ${prefix})
foreach(f bin/hyutil lib/pkgconfig/hy_util.pc include/hy_util/hy_util.h share/hy_util/lang/en-US.xml)
  if(NOT EXISTS ${prefix}/${f})
    message(FATAL_ERROR "not installed: ${f}")
  endif()
endforeach()
# The pkg-config file must point into the prefix it was installed to.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags hy_util OUTPUT_VARIABLE cflags)
  if(NOT cflags MATCHES "${HY_WORK_DIR}")
    message(FATAL_ERROR "hy_util.pc points elsewhere: ${cflags}")
  endif()
endif()
run(${CMAKE_COMMAND} -S ${HY_CONSUMER_SOURCE} -B ${HY_WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${HY_WORK_DIR}/build)
run(${HY_WORK_DIR}/build/consumer)
