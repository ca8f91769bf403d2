# Checks the includes of the sources against the layers. An include points down, never
# up and never sideways, however it is written; neither does a form's header or the header of a class
# promoted in a form. Sound libraries stay inside audio/ and platform/, the operating system inside
# platform/.
#
#   cmake -DSOURCES=<src folder> -P check_layers.cmake

cmake_minimum_required(VERSION 3.22)

set(below_subsystems widgets core platform)
set(subsystems reading metronome composer eartraining reference)

set(allowed_core core platform)
set(allowed_widgets ${below_subsystems})
foreach(subsystem IN LISTS subsystems)
  set(allowed_${subsystem} ${subsystem} ${below_subsystems})
endforeach()
# The composer has layers of its own: logic first, then what is seen, then the window.
set(allowed_composer/melody composer/melody core platform)
set(allowed_composer/library composer/library ${allowed_composer/melody})
set(allowed_composer/score composer/score ${allowed_composer/melody})
set(allowed_composer/notation composer/notation composer/score core platform)
set(allowed_composer/playback composer/playback ${allowed_composer/melody})
set(allowed_composer/exchange composer/exchange composer/score composer/playback
    ${allowed_composer/library})
set(allowed_composer/export composer/export composer/playback composer/library
    ${allowed_composer/exchange})
set(allowed_composer/staff composer/staff composer/notation composer/score ${below_subsystems})
set(allowed_composer/panels composer/panels composer/library composer/playback composer/melody
    ${below_subsystems})
set(allowed_composer composer composer/panels composer/staff composer/notation ${allowed_composer/export} widgets)
# Each exercise of ear training has a folder of its own and knows no other exercise. In eartraining/
# itself lie what they share and, above them, the list of exercises and the window.
set(above_exercises "^eartraining/(ear_training|exercises|frmInto)\\.h$")
file(GLOB exercises LIST_DIRECTORIES true RELATIVE ${SOURCES} ${SOURCES}/eartraining/*)
foreach(exercise IN LISTS exercises)
  if(IS_DIRECTORY ${SOURCES}/${exercise})
    set(allowed_${exercise} ${exercise} ${allowed_eartraining})
    list(APPEND exercise_folders ${exercise})
  endif()
endforeach()
list(APPEND allowed_eartraining ${exercise_folders})
set(allowed_shell shell ${subsystems} ${below_subsystems})
set(allowed_manual manual widgets platform)
set(allowed_command command ${allowed_composer/export})
set(allowed_audio audio platform)
set(allowed_platform platform)
set(allowed_platform/modules platform platform/modules)
set(allowed_platform/desktop platform platform/desktop platform/modules)
set(allowed_platform/linux platform platform/linux audio)
set(allowed_platform/windows platform platform/windows)

set(audio_headers "^(fluidsynth|sndfile|glib)")
set(system_headers "^(RtMidi|rtmidi|alsa/|jack/|pulse/|dbus/|X11/|unistd|sys/|fcntl|pthread|windows|mmsystem)")

file(GLOB_RECURSE forms RELATIVE ${SOURCES} ${SOURCES}/*.ui)
foreach(form IN LISTS forms)
  get_filename_component(name ${form} NAME_WE)
  get_filename_component(folder_of_ui_${name}.h ${form} DIRECTORY)
endforeach()

set(checked 0)
# Holds one header that a file names, as it stands between the quotes or angle brackets.
function(check_header file header)
  get_filename_component(folder ${file} DIRECTORY)
  if(header MATCHES "${system_headers}" AND NOT folder MATCHES "^platform/")
    message(SEND_ERROR "${file}: ${header} belongs into platform/")
  endif()
  if(header MATCHES "${audio_headers}" AND NOT folder MATCHES "^(audio$|platform/linux$)")
    message(SEND_ERROR "${file}: ${header} belongs into audio/")
  endif()
  if(folder IN_LIST exercise_folders AND header MATCHES "${above_exercises}")
    message(SEND_ERROR "${file}: ${header} points up")
  endif()
  get_filename_component(target "${header}" DIRECTORY)
  if(DEFINED folder_of_${header})
    set(target ${folder_of_${header}})
  elseif(NOT header MATCHES "\\.\\./" AND NOT EXISTS ${SOURCES}/${header})
    return()  # a library's
  endif()
  math(EXPR count "${checked} + 1")
  set(checked ${count} PARENT_SCOPE)
  if(NOT target IN_LIST allowed_${folder})
    message(SEND_ERROR "${file}: ${header} points up or sideways")
  endif()
endfunction()

file(GLOB_RECURSE files RELATIVE ${SOURCES} ${SOURCES}/*.h ${SOURCES}/*.cpp ${SOURCES}/*.ui)
foreach(file IN LISTS files)
  get_filename_component(folder ${file} DIRECTORY)
  if(folder STREQUAL "")
    continue()  # main.cpp puts everything together
  endif()
  if(NOT DEFINED allowed_${folder})
    message(SEND_ERROR "${file}: no layer is known for this folder")
  endif()
  file(STRINGS ${SOURCES}/${file} includes REGEX "^[ \t]*#[ \t]*include|<header")
  foreach(include IN LISTS includes)
    if(include MATCHES "(<header[^>]*>|include[ \t]*[<\"])([^<>\"]+)[<>\"]")
      check_header(${file} "${CMAKE_MATCH_2}")
    else()
      message(SEND_ERROR "${file}: ${include} cannot be checked")
    endif()
  endforeach()
endforeach()

if(checked EQUAL 0)
  message(SEND_ERROR "No include was checked: is ${SOURCES} the folder of the sources?")
endif()
message(STATUS "${checked} includes point down")
