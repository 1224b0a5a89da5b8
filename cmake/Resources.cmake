# Embedded resources: every file under resources/ that the plug-in carries,
# found at run time by its file name, "name.type", whatever the case.

file(GLOB_RECURSE QUINDREL_RESOURCE_FILES CONFIGURE_DEPENDS
    "${CMAKE_SOURCE_DIR}/resources/*.xml"
    "${CMAKE_SOURCE_DIR}/resources/*.png"
    "${CMAKE_SOURCE_DIR}/resources/*.ttf"
    "${CMAKE_SOURCE_DIR}/resources/*.qddrmap"
    "${CMAKE_SOURCE_DIR}/resources/*.qdprs"
    "${CMAKE_SOURCE_DIR}/resources/*.qdprsb"
    "${CMAKE_SOURCE_DIR}/resources/*.qdptrbH"
    "${CMAKE_SOURCE_DIR}/resources/*.qdptrbN")

juce_add_binary_data(quindrel_resources
    NAMESPACE QuindrelBinaryData
    HEADER_NAME QuindrelBinaryData.h
    SOURCES ${QUINDREL_RESOURCE_FILES})

# JUCE regenerates the data only when the list of files changes; an edited
# resource must rebuild it too.
add_custom_command(OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/juce_binarydata_quindrel_resources/JuceLibraryCode/BinaryData1.cpp"
    APPEND DEPENDS ${QUINDREL_RESOURCE_FILES})
