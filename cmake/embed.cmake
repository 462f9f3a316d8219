# embed_files(OUTPUT FUNCTION PATTERN...): writes a C++ source whose app::FUNCTION() hands back the files.
function(embed_files output function)
  file(GLOB files CONFIGURE_DEPENDS ${ARGN})
  list(SORT files)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} -DFUNCTION=${function} "-DFILES=${files}"
      -P ${CMAKE_SOURCE_DIR}/cmake/embed_script.cmake
    DEPENDS ${files} ${CMAKE_SOURCE_DIR}/cmake/embed_script.cmake
    VERBATIM)
endfunction()
