# What `cmake --install` puts into a prefix: programs, both libraries, what C programs need, the driver's files, documents.
# Programs find libraries and driver files from their own place, so that a prefix can be moved.

set_target_properties(heron_driver heron_platform PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0)
set_target_properties(heron_driver PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(heron_notify heron_resources heron_devicecomm PROPERTIES INSTALL_RPATH "$ORIGIN/../..")

install(TARGETS heron_cli heron_sheet heron_spool heron_picture RUNTIME DESTINATION bin)
install(TARGETS heron_driver heron_platform LIBRARY DESTINATION lib)
install(TARGETS heron_resources heron_notify heron_devicecomm LIBRARY DESTINATION lib/heron/driver)
install(FILES ${HERON_DRIVER_DIR}/TVOR610.vxs ${HERON_DRIVER_DIR}/varnell.device DESTINATION lib/heron/driver)

install(FILES include/heron/heron.h DESTINATION include/heron)
configure_file(cmake/heron.pc.in heron.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/heron.pc DESTINATION lib/pkgconfig)

install(FILES README.md LICENSE DESTINATION share/doc/heron)
install(DIRECTORY samples/ DESTINATION share/doc/heron/samples)
if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/docs/man/heron.1)
  install(FILES docs/man/heron.1 DESTINATION share/man/man1)
endif()
