# On macOS the library is Kobaltrix.framework, with the headers in it; a game carries it in the Frameworks folder of its
# bundle and is linked with the rpath @executable_path/../Frameworks. Configured by tests/project, but never built: no macOS
# was at hand.
file(GLOB framework_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/Kobaltrix/*.h)
target_sources(Kobaltrix PRIVATE ${framework_headers}) # only sources are copied into it
set_target_properties(
  Kobaltrix
  PROPERTIES FRAMEWORK ON
             FRAMEWORK_VERSION A
             MACOSX_FRAMEWORK_IDENTIFIER org.kobaltrix.Kobaltrix
             MACOSX_FRAMEWORK_BUNDLE_VERSION ${PROJECT_VERSION}
             MACOSX_FRAMEWORK_SHORT_VERSION_STRING ${PROJECT_VERSION}
             MACOSX_RPATH ON
             INSTALL_NAME_DIR @rpath
             PUBLIC_HEADER "${framework_headers}")
