# Turns every data/*.sql file into a C++ raw-string constant of one generated
# source file, so that the library can make a database wherever the program
# runs, without the data folder beside it. Run in script mode:
#   cmake -DDATA_DIR=<folder of the .sql files> -DOUTPUT=<generated .cpp> -P EmbedSqlFiles.cmake

if(NOT DATA_DIR OR NOT OUTPUT)
  message(FATAL_ERROR "EmbedSqlFiles.cmake needs DATA_DIR and OUTPUT")
endif()

file(GLOB sqlFiles "${DATA_DIR}/*.sql")
list(SORT sqlFiles)

set(delimiter "IRASSQL")
set(entries "")
foreach(sqlFile IN LISTS sqlFiles)
  get_filename_component(name "${sqlFile}" NAME)
  file(READ "${sqlFile}" text)
  string(FIND "${text}" ")${delimiter}\"" clash)
  if(NOT clash EQUAL -1)
    message(FATAL_ERROR "${sqlFile} contains the text )${delimiter}\" and cannot be embedded")
  endif()
  string(APPEND entries "    {\"${name}\", R\"${delimiter}(${text})${delimiter}\"},\n")
endforeach()
if(entries STREQUAL "")
  # An array cannot be empty; an entry without a name stands for no file.
  set(entries "    {\"\", \"\"},\n")
endif()

set(content "// Generated from ${DATA_DIR}/*.sql by cmake/EmbedSqlFiles.cmake; do not edit.\n\
#include \"platform/database/Schema.h\"\n\
\n\
namespace iras::db {\n\
namespace {\n\
constexpr EmbeddedSqlFile Files[] = {\n\
${entries}};\n\
}  // namespace\n\
\n\
std::span<const EmbeddedSqlFile> EmbeddedSqlFiles() {\n\
    std::span<const EmbeddedSqlFile> files(Files);\n\
    return files.front().name.empty() ? files.first(0) : files;\n\
}\n\
\n\
}  // namespace iras::db\n")

file(WRITE "${OUTPUT}" "${content}")
