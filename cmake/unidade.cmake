# Unity build (-DCMAKE_UNITY_BUILD=ON, which scripts/testar.sh uses for its g++ build): each
# target's sources are compiled a batch at a time, so the Qt, GoogleTest and standard
# headers are parsed once per batch instead of once per file. The files below keep a
# helper of their own (in an unnamed namespace) under the same name as a neighbour's, so
# they are compiled on their own.
set(velmora_fora_da_unidade
    app/cli/partidaonline.cpp
    app/cli/partidarede.cpp
    app/cli/terminalrede.cpp
    server/opcoes.cpp
    service/cadastro.cpp
    service/respostas.cpp
    store/recordes.cpp
    store/regedit4.cpp
    store/registro.cpp
    tests/peer/duascopias_teste.cpp
    tests/service/atualizacao/frmup_teste.cpp
    ui/frmcadastro.cpp
    ui/frmnewgame.cpp
    ui/janelatabuleiro.cpp)
foreach(arquivo ${velmora_fora_da_unidade})
  get_filename_component(pasta ${PROJECT_SOURCE_DIR}/${arquivo} DIRECTORY)
  if(EXISTS ${PROJECT_SOURCE_DIR}/${arquivo})
    # the property lives in the scope of the folder whose CMakeLists adds the file
    foreach(escopo ${pasta} ${pasta}/..)
      if(EXISTS ${escopo}/CMakeLists.txt)
        set_source_files_properties(${PROJECT_SOURCE_DIR}/${arquivo} DIRECTORY ${escopo}
                                    PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
      endif()
    endforeach()
  endif()
endforeach()
