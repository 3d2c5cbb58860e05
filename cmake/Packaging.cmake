# "cpack -G DEB" in the build folder makes the Debian package of what "cmake --install" puts in
# place; the programs are stripped on the way, their debug data stays in the build.

set(CPACK_PACKAGE_NAME dq480)
set(CPACK_PACKAGE_VENDOR "DQ-480 developers")
set(CPACK_PACKAGE_CONTACT "DQ-480 developers <dq480@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "setting software for the DQ-480 voice-message announcer")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Card format: UDisks2 where the desktop runs it, mkfs.fat otherwise.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "dosfstools, udisks2")
# CPack puts the summary above this and indents it, a blank line becoming Debian's " .".
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The DQ-480 plays recorded MP2 sentences from a removable memory card
according to 64 programs. The desktop program dq480 builds a project
(sentence table, programs and steps), saves it as a setting file (*.stf),
writes it to the card, copies sentences back and formats cards.

The command-line tool dq480-cli checks, converts, prints and writes
setting files without a display.")

include(CPack)
