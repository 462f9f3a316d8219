# embed_files(OUTPUT FUNCTION PATTERN...): writes a C++ source whose app::FUNCTION() hands back the files.
function(embed_files output function)
  file(GLOB files CONFIGURE_DEPENDS ${ARGN})
  list(SORT files)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} -DFUNCTION=${function} "-DFILES=${files}"
      -P ${CMAKE_SOURCE_DIR}/cmake/embed_script.cmake
    DEPENDS ${files} ${CMAKE_SOURCE_DIR}/cmake/embed_script.cmake ${CMAKE_SOURCE_DIR}/cmake/raw_literal.cmake
    VERBATIM)
endfunction()

# embed_texts(OUTPUT NAMESPACE PATTERN...): writes a C++ header with each file's text as a constant NAMESPACE::NAME, named
# for the file without its ending. Standard C++ only.
function(embed_texts output namespace)
  file(GLOB files CONFIGURE_DEPENDS ${ARGN})
  list(SORT files)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} -DNAMESPACE=${namespace} "-DFILES=${files}"
      -P ${CMAKE_SOURCE_DIR}/cmake/embed_texts_script.cmake
    DEPENDS ${files} ${CMAKE_SOURCE_DIR}/cmake/embed_texts_script.cmake ${CMAKE_SOURCE_DIR}/cmake/raw_literal.cmake
    VERBATIM)
endfunction()
