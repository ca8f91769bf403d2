# The fields of the Debian package; the libraries it depends on are read off the executable.
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "timgm6mb-soundfont, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-gtk-platformtheme)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${CANTAVISTA_URL})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "note reading, metronome, melodies and ear training")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Cantavista is for music students. It drills the reading of notes on the
grand staff, keeps time with a metronome, writes and plays melodies, and
trains the ear with single notes, intervals and chords.

It sounds at once, with a synthesizer of its own, or on any MIDI port.
Every control works from the keyboard and with a screen reader. The user
interface and the manual are Italian.")
