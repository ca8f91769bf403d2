# Writes what the help compiler reads, from the list of the pages: the project, the contents and the
# index. They are in the code page that readers of compiled help expect for Italian.
#
#   cmake -DCONTENTS=<contenuti.txt> -DPAGES=<folder> -DPROJECT=<project.hhp> -P make_project.cmake

cmake_minimum_required(VERSION 3.22)

# The letters of Windows-1252 that Italian needs, by their codes.
set(letters "à=224" "è=232" "é=233" "ì=236" "ò=242" "ù=249" "À=192" "È=200" "É=201" "Ì=204" "Ò=210"
            "Ù=217" "«=171" "»=187" "’=146" "–=150" "÷=247")

function(write_windows_1252 file text)
  foreach(letter IN LISTS letters)
    string(REGEX MATCH "^(.+)=([0-9]+)$" matched "${letter}")
    string(ASCII ${CMAKE_MATCH_2} code)
    string(REPLACE "${CMAKE_MATCH_1}" "${code}" text "${text}")
  endforeach()
  file(WRITE ${file} "${text}")
endfunction()

function(sitemap_object variable name page)
  set(object "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"${name}\">")
  if(page)
    string(APPEND object "<param name=\"Local\" value=\"${page}\">")
  endif()
  set(${variable} "${${variable}}${object}</OBJECT>\n" PARENT_SCOPE)
endfunction()

set(contents "")
set(words "")
set(files "")
set(in_section FALSE)
file(STRINGS ${CONTENTS} lines ENCODING UTF-8)
foreach(line IN LISTS lines)
  if(line MATCHES "^#" OR line STREQUAL "")
    continue()
  elseif(line MATCHES "^\\* (.+)$")
    if(in_section)
      string(APPEND contents "</UL>\n")
    endif()
    sitemap_object(contents "${CMAKE_MATCH_1}" "")
    string(APPEND contents "<UL>\n")
    set(in_section TRUE)
  elseif(line MATCHES "^([^ ]+) \\| ([^|]*[^| ]) *\\|[^|]*\\| *(.*)$")
    set(page ${CMAKE_MATCH_1})
    set(title "${CMAKE_MATCH_2}")
    string(REGEX REPLACE " *, *" ";" entries "${CMAKE_MATCH_3}")
    sitemap_object(contents "${title}" ${page})
    string(APPEND files "${page}\n")
    foreach(entry IN LISTS entries)
      list(APPEND words "${entry}|${page}")
    endforeach()
  else()
    message(FATAL_ERROR "${CONTENTS}: cannot read the line: ${line}")
  endif()
endforeach()
if(in_section)
  string(APPEND contents "</UL>\n")
endif()

set(index "")
list(SORT words CASE INSENSITIVE)
foreach(word IN LISTS words)
  string(REGEX MATCH "^(.*)\\|(.*)$" matched "${word}")
  sitemap_object(index "${CMAKE_MATCH_1}" ${CMAKE_MATCH_2})
endforeach()

file(GLOB pictures RELATIVE ${PAGES} ${PAGES}/*.css ${PAGES}/immagini/*.png)
list(JOIN pictures "\n" pictures)

set(head "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML><HEAD><meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\"></HEAD><BODY>\n")
get_filename_component(name ${PROJECT} NAME_WE)
get_filename_component(folder ${PROJECT} DIRECTORY)
write_windows_1252(${folder}/${name}.hhc "${head}<UL>\n${contents}</UL>\n</BODY></HTML>\n")
write_windows_1252(${folder}/${name}.hhk "${head}<UL>\n${index}</UL>\n</BODY></HTML>\n")
write_windows_1252(${PROJECT} "[OPTIONS]
Compatibility=1.1 or later
Compiled file=${name}.chm
Contents file=${name}.hhc
Index file=${name}.hhk
Default topic=index.html
Default Window=guida
Title=Guida di Cantavista
Language=0x410 Italian (Italy)
Full-text search=Yes
Binary TOC=No
Binary Index=No
Display compile progress=No

[WINDOWS]
guida=\"Guida di Cantavista\",\"${name}.hhc\",\"${name}.hhk\",\"index.html\",\"index.html\",,,,,0x63520,240,0x104e,[80,60,1000,700],,,,,,,0

[FILES]
${files}${pictures}
")
