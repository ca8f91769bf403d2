# Tries the guard over the includes: each of these sources alone must be refused.
#
#   cmake -DGUARD=<check_layers.cmake> -DTREE=<folder to work in> -P check_refusals.cmake

set(refused
  "core/a.h|#include \"widgets/b.h\""
  "core/a.h|#include <widgets/b.h>"
  "widgets/a.h|#include <reading/b.h>"
  "reading/a.cpp|#include \"composer/b.h\""
  "reading/a.cpp|  #  include\t<composer/b.h>"
  "reading/a.cpp|#include \"../composer/b.h\""
  "reading/a.cpp|#include \"ui_sheet.h\""
  "reading/a.cpp|#include <ui_sheet.h>"
  "reading/a.cpp|#include SHEET"
  "reading/a.ui|   <header>composer/b.h</header>"
  "reading/a.ui|   <header location=\"global\">composer/b.h</header>"
  "composer/melody/a.cpp|#include <composer/b.h>"
  "shell/a.cpp|#include \"sndfile.h\""
  "platform/desktop/a.cpp|#include <sndfile.h>"
  "audio/a.cpp|#include <jack/jack.h>"
  "audio/a.cpp|#include \"platform/linux/b.h\""
  "core/a.cpp|#include \"audio/b.h\""
  "elsewhere/a.cpp|#include <QString>")
foreach(case IN LISTS refused)
  string(REGEX MATCH "^([^|]+)[|](.*)$" found "${case}")
  set(file ${CMAKE_MATCH_1})
  set(line "${CMAKE_MATCH_2}")
  file(REMOVE_RECURSE ${TREE})
  # What is there to be included, and one include that is right.
  foreach(header widgets/b.h reading/b.h composer/b.h)
    file(WRITE ${TREE}/${header} "#include \"core/b.h\"\n")
  endforeach()
  file(WRITE ${TREE}/core/b.h "")
  file(WRITE ${TREE}/audio/b.h "#include <sndfile.h>\n")
  file(WRITE ${TREE}/platform/linux/b.h "#include \"audio/b.h\"\n")
  file(WRITE ${TREE}/composer/sheet.ui "")
  execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCES=${TREE} -P ${GUARD}
                  RESULT_VARIABLE failed OUTPUT_QUIET ERROR_VARIABLE words)
  if(failed)
    message(SEND_ERROR "Refused without a reason: ${words}")
  endif()
  file(WRITE ${TREE}/${file} "${line}\n")
  execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCES=${TREE} -P ${GUARD}
                  RESULT_VARIABLE failed OUTPUT_QUIET ERROR_VARIABLE words)
  if(NOT failed OR NOT words MATCHES "${file}: ")
    message(SEND_ERROR "Not refused: ${file}: ${line}")
  endif()
endforeach()
