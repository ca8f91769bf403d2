# Installs what was built into TREE and looks at it as a desktop would.
file(REMOVE_RECURSE ${TREE})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${TREE}
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

function(expect)
  foreach(file IN LISTS ARGN)
    if(NOT EXISTS ${TREE}/${file})
      message(SEND_ERROR "Not installed: ${file}")
    endif()
  endforeach()
endfunction()

# Reads what stands between two marks of a file's first line that has both.
function(read_between variable file before after)
  file(STRINGS ${TREE}/${file} line REGEX "${before}.*${after}" LIMIT_COUNT 1)
  string(REGEX REPLACE ".*${before}(.*)${after}.*" "\\1" found "${line}")
  set(${variable} "${found}" PARENT_SCOPE)
endfunction()

set(menu share/applications/cantavista.desktop)
set(catalogue share/metainfo/org.example.cantavista.metainfo.xml)
set(types share/mime/packages/cantavista.xml)
expect(${menu} ${catalogue} ${types} share/man/man1/cantavista.1.gz share/man/it/man1/cantavista.1.gz
       share/cantavista/note/ap.mid share/cantavista/note/rok.wav share/cantavista/note/rko.wav
       share/cantavista/Melodie/Esempi/Greensleeves.mel share/cantavista/aiuto/index.html
       share/doc/cantavista/copyright share/doc/cantavista/changelog.gz)

# Where the executable looks for it.
file(GLOB modules ${TREE}/lib*/cantavista/*.so ${TREE}/lib/*/cantavista/*.so)
list(LENGTH modules count)
if(NOT count EQUAL 1)
  message(SEND_ERROR "Not the module for printing: ${modules}")
endif()

read_between(program ${menu} "^Exec=" " %f$")
read_between(icon ${menu} "^Icon=" "$")
read_between(opened ${menu} "^MimeType=" "$")
# The semicolons of a line come back escaped.
string(REPLACE "\\;" ";" opened "${opened}")
list(REMOVE_ITEM opened "")
list(GET opened 0 type)
string(REPLACE "/" "-" type_icon "${type}")
expect(bin/${program})
foreach(size 16 24 32 48 64 128 256)
  set(icons share/icons/hicolor/${size}x${size})
  expect(${icons}/apps/${icon}.png ${icons}/mimetypes/${type_icon}.png)
endforeach()

# The types in all places of a file that stand between two marks.
function(read_types variable file before after)
  file(READ ${TREE}/${file} text)
  string(REGEX MATCHALL "${before}[^\"<]+${after}" places "${text}")
  list(TRANSFORM places REPLACE "${before}|${after}" "")
  set(${variable} "${places}" PARENT_SCOPE)
endfunction()

read_types(declared ${types} "<mime-type type=\"" "\">")
read_types(provided ${catalogue} "<mediatype>" "</mediatype>")
read_between(launched ${catalogue} "\"desktop-id\">" "</launchable>")
foreach(other declared provided)
  if(NOT opened STREQUAL ${other})
    message(SEND_ERROR "Not the same types: ${opened} and ${${other}}")
  endif()
endforeach()
expect(share/applications/${launched})
