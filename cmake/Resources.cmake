# Embedded resources: every file under resources/ that the plug-in carries,
# found at run time by its file name, "name.type", whatever the case.

file(GLOB_RECURSE QUINDREL_RESOURCE_FILES CONFIGURE_DEPENDS
    "${CMAKE_SOURCE_DIR}/resources/*.xml"
    "${CMAKE_SOURCE_DIR}/resources/*.png"
    "${CMAKE_SOURCE_DIR}/resources/*.ttf"
    "${CMAKE_SOURCE_DIR}/resources/fonts/LICENSE-*.txt"
    "${CMAKE_SOURCE_DIR}/resources/*.qddrmap"
    "${CMAKE_SOURCE_DIR}/resources/*.qdprs"
    "${CMAKE_SOURCE_DIR}/resources/*.qdprsb"
    "${CMAKE_SOURCE_DIR}/resources/*.qdptrbH"
    "${CMAKE_SOURCE_DIR}/resources/*.qdptrbN")

juce_add_binary_data(quindrel_resources
    NAMESPACE QuindrelBinaryData
    HEADER_NAME QuindrelBinaryData.h
    SOURCES ${QUINDREL_RESOURCE_FILES})

# JUCE's rule watches only its list of inputs, which configuring rewrites:
# a changed resource file must configure again, or the old bytes stay embedded.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${QUINDREL_RESOURCE_FILES})
