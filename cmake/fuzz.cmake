# One libFuzzer target and the short run that CI makes of it.
#
#   velmora_fuzzer(nome FONTES f.cpp... [LIBS alvo...] [SEMENTES pasta] [MAX_LEN n]
#                  [AMBIENTE VAR=valor...])
#
# builds velmora_fuzz_<nome> from its sources (a library's sources may be listed again so
# that they are instrumented for the fuzzer's coverage), copies the seeds of
# fuzz/<SEMENTES> (default fuzz/sementes_<nome>) into a corpus folder in the build tree,
# and adds the test fuzz_<nome>, labelled fuzz, that runs it for 15 seconds. Does nothing
# unless VELMORA_FUZZ is on (clang builds).
function(velmora_fuzzer nome)
  if(NOT VELMORA_FUZZ)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "SEMENTES;MAX_LEN" "FONTES;LIBS;AMBIENTE")
  if(NOT arg_FONTES)
    message(FATAL_ERROR "velmora_fuzzer(${nome}): sem FONTES")
  endif()
  if(NOT arg_SEMENTES)
    set(arg_SEMENTES sementes_${nome})
  endif()
  if(NOT arg_MAX_LEN)
    set(arg_MAX_LEN 4096)
  endif()
  set(alvo velmora_fuzz_${nome})
  add_executable(${alvo} ${arg_FONTES})
  # sources of several folders, some with helpers of the same name: one file at a time
  set_target_properties(${alvo} PROPERTIES UNITY_BUILD OFF)
  target_include_directories(${alvo} PRIVATE ${PROJECT_SOURCE_DIR})
  if(arg_LIBS)
    target_link_libraries(${alvo} PRIVATE ${arg_LIBS})
  endif()
  target_compile_options(${alvo} PRIVATE -fsanitize=fuzzer,address)
  target_link_options(${alvo} PRIVATE -fsanitize=fuzzer,address)

  set(corpus ${CMAKE_CURRENT_BINARY_DIR}/corpus_${nome})
  file(MAKE_DIRECTORY ${corpus})
  file(GLOB sementes ${CMAKE_CURRENT_SOURCE_DIR}/fuzz/${arg_SEMENTES}/*)
  if(sementes)
    file(COPY ${sementes} DESTINATION ${corpus})
  endif()
  add_test(NAME fuzz_${nome}
           COMMAND ${alvo} -max_total_time=15 -max_len=${arg_MAX_LEN} -rss_limit_mb=2048 ${corpus})
  set_tests_properties(fuzz_${nome} PROPERTIES TIMEOUT 120 LABELS fuzz)
  if(arg_AMBIENTE)
    set_tests_properties(fuzz_${nome} PROPERTIES ENVIRONMENT "${arg_AMBIENTE}")
  endif()
endfunction()
