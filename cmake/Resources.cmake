# The program's information, pictures and icons. On macOS they are in the bundle; on other systems they
# are compiled into the program, with the same paths. platform/Bundle reads them.
#
#   ambulet_resources(layer)    compiles them into a library; does nothing on macOS
#   ambulet_bundle(program)     makes the program a bundle that contains them; does nothing on other systems

set(bundle_executable ambulet)
if(APPLE)
  set(bundle_executable "Daily Steps")
endif()
set(info_plist ${PROJECT_BINARY_DIR}/Info.plist)
configure_file(${PROJECT_SOURCE_DIR}/resources/Info.plist ${info_plist} @ONLY)

set(resource_files
  Help/step_1.jpg Help/step_2.jpg Help/step_3.jpg Help/step_4.jpg
  Help/trodling-1.png
  icon/ambulet-16.png icon/ambulet-22.png icon/ambulet-24.png icon/ambulet-32.png
  icon/ambulet-48.png icon/ambulet-64.png icon/ambulet-128.png icon/ambulet-256.png)

function(ambulet_resources layer)
  if(APPLE)
    return()
  endif()
  set_source_files_properties(${info_plist} PROPERTIES QT_RESOURCE_ALIAS Info.plist)
  qt_add_resources(${layer} bundle PREFIX / FILES ${info_plist})
  list(TRANSFORM resource_files PREPEND ${PROJECT_SOURCE_DIR}/resources/)
  qt_add_resources(${layer} pictures PREFIX / BASE ${PROJECT_SOURCE_DIR}/resources
                   FILES ${resource_files})
endfunction()

function(ambulet_bundle program)
  if(NOT APPLE)
    return()
  endif()
  set_target_properties(${program} PROPERTIES
    OUTPUT_NAME ${bundle_executable}
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${info_plist})
  list(TRANSFORM resource_files PREPEND ${PROJECT_SOURCE_DIR}/resources/)
  foreach(file IN LISTS resource_files)
    cmake_path(GET file PARENT_PATH folder)
    cmake_path(GET folder FILENAME folder)
    set_source_files_properties(${file} PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${folder})
  endforeach()
  # CFBundleIconFile is a name without a folder.
  set(icon ${PROJECT_SOURCE_DIR}/resources/icon/Ambulet.icns)
  set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
  target_sources(${program} PRIVATE ${resource_files} ${icon})

  # Signs the installed bundle, which contains its libraries: cmake --build BUILD --target sign
  set(AMBULET_SIGNING_IDENTITY "-" CACHE STRING "The identity that signs the bundle; with - it runs on this Mac only")
  add_custom_target(sign
    COMMAND codesign --force --deep --options runtime
            --entitlements ${PROJECT_SOURCE_DIR}/resources/Ambulet.entitlements
            --sign ${AMBULET_SIGNING_IDENTITY} ${CMAKE_INSTALL_PREFIX}/${bundle_executable}.app
    VERBATIM)
endfunction()
