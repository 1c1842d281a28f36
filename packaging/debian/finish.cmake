# SPDX-License-Identifier: GPL-3.0-or-later
# cpack runs this after installing into a folder for each package and before packing it: makes the changes to the files
# of `cmake --install` that Debian's rules require.
set(revision ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
foreach(package ${CPACK_COMPONENTS_ALL})
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${package}/usr)
  set(doc ${usr}/share/doc/${package})
  configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${doc}/changelog.Debian @ONLY NO_SOURCE_PERMISSIONS)
  file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${doc} NO_SOURCE_PERMISSIONS)
  file(REMOVE ${doc}/LICENSE)  # Debian wants it in copyright
  if(EXISTS ${doc}/CHANGELOG.md)
    file(RENAME ${doc}/CHANGELOG.md ${doc}/changelog)
  endif()
  file(GLOB compressed ${usr}/share/man/*/* ${doc}/changelog*)
  execute_process(COMMAND gzip -9n ${compressed} COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB binaries ${usr}/bin/* ${usr}/lib/*/*.a)
  execute_process(COMMAND ${CPACK_KELVO_STRIP} --strip-unneeded --remove-section=.comment --remove-section=.note ${binaries}
    COMMAND_ERROR_IS_FATAL ANY)
  file(CHMOD_RECURSE ${usr} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)  # whatever the umask
endforeach()
