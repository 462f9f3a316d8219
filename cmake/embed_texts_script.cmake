# Run by embed_texts.
include(${CMAKE_CURRENT_LIST_DIR}/raw_literal.cmake)
set(source "// Generated; do not edit.\n#pragma once\n\nnamespace ${NAMESPACE} {\n")
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME_WE)
  raw_literal(pieces ${file})
  string(APPEND source "inline constexpr const char* ${name} = ${pieces};\n")
endforeach()
file(WRITE ${OUTPUT} "${source}}  // namespace ${NAMESPACE}\n")
