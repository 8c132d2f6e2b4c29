# Installs the library into an empty prefix and builds the example host against what stands
# there, once through the CMake package and once through pkg-config, and runs both.
#
#   cmake -D SOURCE=... -D WORK=... -D SHARED=ON|OFF -D CXX=... -P installed_host.cmake
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
set(prefix "${WORK}/prefix")
run(${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}/library" -DCMAKE_CXX_COMPILER=${CXX}
    -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=${SHARED} -DBUILD_TESTING=OFF
    -DLEMARA_BUILD_TOOLS=OFF -DLEMARA_BUILD_LEXICON=OFF -DLEMARA_BUILD_PYTHON=OFF
    -DCMAKE_INSTALL_PREFIX=${prefix} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
run(${CMAKE_COMMAND} --build "${WORK}/library" -j2)
run(${CMAKE_COMMAND} --install "${WORK}/library")

# A world of one word: "lur", accepted as a noun.
file(WRITE "${WORK}/eumorfo.sare" "0\tl\t1\n1\tu\t2\n2\tr\t3\n3\t<IZE>:<>\t4\nfinal: 4\n")
file(WRITE "${WORK}/sareak.cfg" "${WORK}/eumorfo.sare\n")

function(expect_answers program)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ${ARGN} "${program}" "${WORK}/sareak.cfg"
                          "Lur lru"
                  RESULT_VARIABLE status OUTPUT_VARIABLE out)
  foreach(piece "Lur\tvalid\tlur IZE" "lru\tunknown\tlru EZZG" "<frm>Lur</frm>\n\t<prop k=\"ok\"/>"
                "<prop k=\"ezz\">\n\t\t<sugg>lur</sugg>")
    string(FIND "${out}" "${piece}" at)
    if(at EQUAL -1 OR NOT status EQUAL 0)
      message(FATAL_ERROR "${program}: status ${status}, no '${piece}' in:\n${out}")
    endif()
  endforeach()
endfunction()

run(${CMAKE_COMMAND} -S "${SOURCE}/examples" -B "${WORK}/by-package"
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build "${WORK}/by-package")
expect_answers("${WORK}/by-package/check")

file(GLOB_RECURSE pc "${prefix}/lemara.pc")
get_filename_component(pc_folder "${pc}" DIRECTORY)
get_filename_component(library_folder "${pc_folder}" DIRECTORY)
execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_folder}
                        pkg-config --cflags --libs lemara
                OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "pkg-config knows no lemara in ${pc_folder}")
endif()
separate_arguments(flags)
run(${CXX} -std=c++17 "${SOURCE}/examples/check.cpp" -o "${WORK}/by-pkg-config" ${flags})
expect_answers("${WORK}/by-pkg-config" LD_LIBRARY_PATH=${library_folder})

if(SHARED)
  # A distribution wants a SONAME, and no symbols but the interface.
  file(GLOB library "${library_folder}/liblemara.so.*.*")
  execute_process(COMMAND objdump -p "${library}" OUTPUT_VARIABLE headers)
  if(NOT headers MATCHES "SONAME +liblemara\\.so\\.1\n")
    message(FATAL_ERROR "no SONAME liblemara.so.1 in ${library}")
  endif()
  execute_process(COMMAND nm -D --defined-only -C "${library}" OUTPUT_VARIABLE symbols)
  if(symbols MATCHES "anonymous namespace" OR symbols MATCHES "lemara::SearchPath")
    message(FATAL_ERROR "inner symbols are exported:\n${symbols}")
  endif()
endif()
