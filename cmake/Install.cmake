# What `cmake --install` installs: the program, and the files by which a desktop shows and starts it. On
# macOS everything is in the bundle.
include(GNUInstallDirs)

function(ambulet_install program)
  install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} BUNDLE DESTINATION .)
  if(APPLE)
    qt_generate_deploy_app_script(TARGET ${program} OUTPUT_SCRIPT deploy NO_UNSUPPORTED_PLATFORM_ERROR)
    install(SCRIPT ${deploy})
    return()
  endif()

  set(from ${PROJECT_SOURCE_DIR}/packaging/linux)
  set(configured ${PROJECT_BINARY_DIR}/packaging)
  set(id org.ambulet.DailySteps)
  foreach(file ambulet.1 ${id}.metainfo.xml)
    configure_file(${from}/${file} ${configured}/${file} @ONLY)
  endforeach()
  install(FILES ${from}/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${configured}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${configured}/ambulet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/ambulet)

  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  foreach(size 16 22 24 32 48 64 128 256 512)
    install(FILES ${PROJECT_SOURCE_DIR}/resources/icon/ambulet-${size}.png
            DESTINATION ${icons}/${size}x${size}/apps RENAME ${id}.png)
  endforeach()
  install(FILES ${PROJECT_SOURCE_DIR}/resources/icon/ambulet.svg
          DESTINATION ${icons}/scalable/apps RENAME ${id}.svg)
endfunction()
