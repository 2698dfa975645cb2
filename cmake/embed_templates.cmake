# Writes the files of FOLDER into OUTPUT as C++ (engine/reports/default_templates.h).
file(GLOB names RELATIVE ${FOLDER} ${FOLDER}/*)
list(SORT names)
set(arrays "")
set(rows "")
set(number 0)
foreach(name IN LISTS names)
  file(READ ${FOLDER}/${name} bytes HEX)
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char file_${number}[] = {${bytes}};\n")
  string(APPEND rows "    {\"${name}\", {file_${number}, sizeof file_${number}}},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT} "#include \"engine/reports/default_templates.h\"

namespace nimbry {
namespace {

${arrays}
constexpr DefaultTemplate files[] = {
${rows}};

}  // namespace

std::span<const DefaultTemplate> default_templates() {
    return files;
}

}  // namespace nimbry
")
